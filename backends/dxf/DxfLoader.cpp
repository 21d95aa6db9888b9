// Reading a DXF file into a Document: tags, then sections, tables, blocks and entities.
#include <array>
#include <algorithm>
#include <cstring>
#include <optional>

#include "base/Quote.hpp"
#include "dxf/DxfDocument.hpp"

namespace tq::dxf {

namespace {

enum class NumberKind : uint8_t { None, Int, Float };

constexpr std::array<NumberKind, 1072> MakeNumberKinds() {
  std::array<NumberKind, 1072> kinds{};
  auto set = [&](int from, int to, NumberKind k) {
    for (int c = from; c <= to; ++c) kinds[static_cast<size_t>(c)] = k;
  };
  set(10, 59, NumberKind::Float);
  set(60, 99, NumberKind::Int);
  set(110, 149, NumberKind::Float);
  set(160, 179, NumberKind::Int);
  set(210, 239, NumberKind::Float);
  set(270, 289, NumberKind::Int);
  set(290, 299, NumberKind::Int);
  set(370, 389, NumberKind::Int);
  set(400, 409, NumberKind::Int);
  set(420, 429, NumberKind::Int);
  set(440, 459, NumberKind::Int);
  set(460, 469, NumberKind::Float);
  set(1010, 1059, NumberKind::Float);
  set(1060, 1071, NumberKind::Int);
  return kinds;
}
constexpr std::array<NumberKind, 1072> kNumberKinds = MakeNumberKinds();

constexpr std::string_view kUtf8Bom = "\xEF\xBB\xBF";

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The shape of a number, checked without converting it.
bool LooksLikeNumber(std::string_view v, bool allowFloat) {
  size_t i = 0, n = v.size();
  while (i < n && v[i] == ' ') ++i;
  while (n > i && (v[n - 1] == ' ' || v[n - 1] == '\t')) --n;
  if (i < n && (v[i] == '-' || v[i] == '+')) ++i;
  size_t digits = 0;
  while (i < n && IsDigit(v[i])) ++i, ++digits;
  if (allowFloat) {
    if (i < n && v[i] == '.') {
      ++i;
      while (i < n && IsDigit(v[i])) ++i, ++digits;
    }
    if (digits && i < n && (v[i] == 'e' || v[i] == 'E')) {
      ++i;
      if (i < n && (v[i] == '-' || v[i] == '+')) ++i;
      size_t e = 0;
      while (i < n && IsDigit(v[i])) ++i, ++e;
      if (!e) return false;
    }
  }
  return digits > 0 && i == n;
}

std::string_view Keyword(std::string_view v) { return TrimNumber(v); }

uint64_t ParseHandle(std::string_view v) { return ParseHandleDigits(TrimNumber(v)).value_or(0); }

}  // namespace

class Loader {
 public:
  Loader(Document& doc, bool recover, std::string systemCodePage, Audit* audit)
      : doc_(doc), tagger_(doc.bytes_), recover_(recover), systemCodePage_(std::move(systemCodePage)), audit_(audit) {}

  void Run();
  // Where a strict read stopped; nothing when it read to the end.
  const std::optional<Error>& error() const { return error_; }
  std::vector<Problem>& problems() { return problems_; }

 private:
  bool Next();
  void Fail(uint32_t line, const std::string& what);
  bool At(std::string_view keyword) const { return have_ && cur_.code == 0 && Keyword(cur_.value) == keyword; }
  bool AtAny(std::initializer_list<std::string_view> keywords) const;
  std::string Describe() const;
  uint32_t Here() const { return have_ ? cur_.offset : static_cast<uint32_t>(doc_.bytes_.size()); }
  uint32_t AddSegment(uint32_t begin, uint32_t end, uint32_t record = kNoRecord);
  void MakeCodec();
  void Header();
  void Tables();
  void Blocks();
  void Entities(int32_t block);
  void SkipRecord();
  void SkipToEndOfSection();
  // The handles of records that are no entities count too: a new handle is above them all.
  void NoteHandle(const Tag& t) {
    if (t.code == 5 || t.code == 105) doc_.highestHandle_ = std::max(doc_.highestHandle_, ParseHandle(t.value));
  }
  // Whether a record "0 keyword" starts here; else what stands here is told and stepped over.
  bool AtRecord(std::string_view keyword);
  template <class OnTag>
  void ReadRecord(OnTag onTag);

  Document& doc_;
  Tagger tagger_;
  bool recover_;
  std::string systemCodePage_;
  Audit* audit_;
  std::optional<Error> error_;
  std::vector<Problem> problems_;
  Tag cur_;
  bool have_ = false;
  uint32_t rawStart_ = 0;
};

bool Loader::Next() {
  for (;;) {
    if (error_) return have_ = false;
    Tagger::Result r = tagger_.Next(cur_);
    if (r == Tagger::Result::Tag) {
      // Comments (999) are read past, and written back with the bytes around them.
      if (cur_.code == 999) continue;
      if (static_cast<unsigned>(cur_.code) < kNumberKinds.size()) {
        NumberKind kind = kNumberKinds[static_cast<size_t>(cur_.code)];
        if (kind != NumberKind::None && !LooksLikeNumber(cur_.value, kind == NumberKind::Float))
          Fail(cur_.line + 1, "expected " + std::string(kind == NumberKind::Float ? "a number" : "an integer") +
                                  " for group code " + std::to_string(cur_.code) + ", found " +
                                  QuoteFileContent(cur_.value));
      }
      if (audit_) audit_->OnTag(cur_);
      return have_ = !error_;
    }
    if (r == Tagger::Result::End) return have_ = false;
    if (r == Tagger::Result::MissingValue) {
      Fail(tagger_.errorLine(), "the file ends after a group code, where its value was expected");
      return have_ = false;
    }
    Fail(tagger_.errorLine(), "expected a group code (an integer), found " + QuoteFileContent(tagger_.errorText()));
    tagger_.SkipLine();
  }
}

// A strict read stops at the first failure: every loop ends once no tag is at hand.
void Loader::Fail(uint32_t line, const std::string& what) {
  if (error_) return;
  if (recover_) problems_.push_back({line, what});
  else error_ = MakeError(ErrorCode::Malformed, what, line), have_ = false;
}

bool Loader::AtAny(std::initializer_list<std::string_view> keywords) const {
  for (std::string_view k : keywords)
    if (At(k)) return true;
  return false;
}

std::string Loader::Describe() const {
  if (!have_) return "the end of the file";
  return "group code " + std::to_string(cur_.code) + " " + QuoteFileContent(cur_.value);
}

uint32_t Loader::AddSegment(uint32_t begin, uint32_t end, uint32_t record) {
  if (begin > rawStart_) doc_.segments_.push_back({rawStart_, begin});
  doc_.segments_.push_back({begin, end, record});
  rawStart_ = end;
  return static_cast<uint32_t>(doc_.segments_.size() - 1);
}

template <class OnTag>
void Loader::ReadRecord(OnTag onTag) {
  while (Next() && cur_.code != 0) onTag(cur_);
}

void Loader::SkipRecord() {
  ReadRecord([&](const Tag& t) { NoteHandle(t); });
}

void Loader::SkipToEndOfSection() {
  while (have_ && !AtAny({"ENDSEC", "EOF"})) NoteHandle(cur_), Next();
}

void Loader::MakeCodec() {
  doc_.codec_ = std::make_unique<DxfCodec>(doc_.version_, doc_.dwgCodePage_, systemCodePage_);
}

void Loader::Run() {
  // A byte-order mark before the first tag is read past and written back as it was.
  if (doc_.bytes_.starts_with(kUtf8Bom)) tagger_ = Tagger(doc_.bytes_, static_cast<uint32_t>(kUtf8Bom.size()));
  size_t firstNewline = doc_.bytes_.find('\n');
  if (firstNewline != std::string::npos && firstNewline > 0 && doc_.bytes_[firstNewline - 1] == '\r')
    doc_.lineEnd_ = "\r\n";
  // A file without a header section reads as R12 in the system code page.
  doc_.codec_ = std::make_unique<DxfCodec>(doc_.version_, doc_.dwgCodePage_, systemCodePage_);
  bool sawEof = false, sawTables = false;
  Next();
  while (have_) {
    if (At("EOF")) {
      sawEof = true;
      break;
    }
    if (!At("SECTION")) {
      Fail(cur_.line, "expected \"0 SECTION\" or \"0 EOF\", found " + Describe());
      Next();
      continue;
    }
    uint32_t sectionLine = cur_.line, sectionBegin = cur_.offset;
    if (!Next() || cur_.code != 2) {
      Fail(have_ ? cur_.line : tagger_.line(), "expected the section name (group code 2), found " + Describe());
      SkipToEndOfSection();
    } else {
      std::string name(Keyword(cur_.value));
      Next();
      sawTables = sawTables || name == "TABLES";
      // Where a TABLES section goes in a drawing that has none: before the first section
      // that must follow it.
      if (!sawTables && name != "HEADER" && name != "CLASSES" && doc_.tablesSectionAt_ == kNoSegment)
        doc_.tablesSectionAt_ = AddSegment(sectionBegin, sectionBegin);
      if (name == "HEADER") Header();
      else if (name == "TABLES") Tables();
      else if (name == "BLOCKS") Blocks();
      else if (name == "ENTITIES") Entities(-1);
      else SkipToEndOfSection();
      if (name == "ENTITIES") doc_.entitiesEnd_ = AddSegment(Here(), Here());
      if (name == "TABLES") doc_.tablesEnd_ = AddSegment(Here(), Here());
    }
    if (At("ENDSEC")) {
      Next();
    } else {
      Fail(have_ ? cur_.line : tagger_.line(), "the section that starts on line " + std::to_string(sectionLine) +
                                                    " is not closed by \"0 ENDSEC\"");
      if (!have_) doc_.tail_ += FormatTag(0, "ENDSEC", doc_.lineEnd_);
    }
  }
  if (!sawEof) {
    Fail(tagger_.line(), "the file does not end with \"0 EOF\"");
    doc_.tail_ += FormatTag(0, "EOF", doc_.lineEnd_);
  }
  doc_.segments_.push_back({rawStart_, static_cast<uint32_t>(doc_.bytes_.size())});
}

void Loader::Header() {
  std::string variable, textStyle;
  while (have_ && cur_.code != 0) {
    if (cur_.code == 9) variable = std::string(Keyword(cur_.value));
    else if (variable == "$ACADVER" && cur_.code == 1) doc_.version_ = std::string(Keyword(cur_.value));
    else if (variable == "$DWGCODEPAGE" && cur_.code == 3) doc_.dwgCodePage_ = std::string(Keyword(cur_.value));
    else if (variable == "$TEXTSTYLE" && cur_.code == 7) textStyle = std::string(cur_.value);
    else if (variable == "$TEXTSIZE" && cur_.code == 40) ParseDouble(cur_.value, doc_.textSize_);
    else if (variable == "$HANDSEED" && cur_.code == 5) {
      doc_.fileHandSeed_ = ParseHandle(cur_.value);
      doc_.handSeedSegment_ = AddSegment(cur_.offset, cur_.end);
    }
    Next();
  }
  MakeCodec();
  if (!textStyle.empty()) doc_.currentTextStyle_ = doc_.codec_->Decode(textStyle);
}

bool Loader::AtRecord(std::string_view keyword) {
  if (At(keyword)) return true;
  Fail(cur_.line, "expected \"0 " + std::string(keyword) + "\", found " + Describe());
  if (cur_.code == 0) SkipRecord();
  else Next();
  return false;
}

void Loader::Tables() {
  while (have_ && !AtAny({"ENDSEC", "EOF"})) {
    if (!AtRecord("TABLE")) continue;
    std::string table, handle;
    ReadRecord([&](const Tag& t) {
      if (t.code == 2) table = std::string(Keyword(t.value));
      if (t.code == 5) handle = std::string(Keyword(t.value));
      NoteHandle(t);
    });
    while (have_ && !AtAny({"ENDTAB", "ENDSEC", "EOF"})) {
      if (cur_.code != 0) {
        Next();
        continue;
      }
      TableEntry entry;
      entry.begin = cur_.offset;
      entry.line = cur_.line;
      std::string_view name;
      std::string entryHandle;
      TextStyle style;
      ReadRecord([&](const Tag& t) {
        if (t.code == 2) name = t.value;
        else if (t.code == 70) entry.flags = static_cast<int>(std::strtol(std::string(t.value).c_str(), nullptr, 10));
        else if (t.code == 5) entryHandle = std::string(Keyword(t.value));
        if (t.code == 5 || t.code == 105) NoteHandle(t);
        else if (t.code == 40) ParseDouble(t.value, style.height);
        else if (t.code == 41) ParseDouble(t.value, style.widthFactor);
      });
      entry.end = Here();
      entry.name = doc_.codec_->Decode(name);
      if (table == "LAYER" || table == "APPID") {
        entry.segment = AddSegment(entry.begin, entry.end);
        (table == "LAYER" ? doc_.layers_ : doc_.appIds_).push_back(std::move(entry));
      } else if (table == "BLOCK_RECORD" && EqualNoCase(entry.name, u"*Model_Space")) {
        doc_.modelSpaceHandle_ = entryHandle;
      } else if (table == "STYLE") {
        style.name = entry.name;
        doc_.textStyles_.push_back(std::move(style));
      }
    }
    if (At("ENDTAB")) {
      if (table == "LAYER") doc_.layerTableEnd_ = AddSegment(Here(), Here()), doc_.layerTableHandle_ = handle;
      if (table == "APPID") doc_.appIdTableEnd_ = AddSegment(Here(), Here()), doc_.appIdTableHandle_ = handle;
      SkipRecord();
    } else {
      Fail(have_ ? cur_.line : tagger_.line(), "table " + QuoteFileContent(table) + " is not closed by \"0 ENDTAB\"");
    }
  }
}

void Loader::Blocks() {
  while (have_ && !AtAny({"ENDSEC", "EOF"})) {
    if (!AtRecord("BLOCK")) continue;
    BlockDefinition block;
    std::string_view name;
    ReadRecord([&](const Tag& t) {
      NoteHandle(t);
      if (t.code == 2) name = t.value;
      else if (t.code == 10) ParseDouble(t.value, block.baseX);
      else if (t.code == 20) ParseDouble(t.value, block.baseY);
      else if (t.code == 30) ParseDouble(t.value, block.baseZ);
    });
    block.name = doc_.codec_->Decode(name);
    block.firstRecord = static_cast<uint32_t>(doc_.records_.size());
    doc_.blocks_.push_back(std::move(block));
    Entities(static_cast<int32_t>(doc_.blocks_.size() - 1));
    doc_.blocks_.back().endRecord = static_cast<uint32_t>(doc_.records_.size());
    if (At("ENDBLK")) SkipRecord();
    else Fail(have_ ? cur_.line : tagger_.line(), "block " + ToUtf8(QuoteFileContent(doc_.blocks_.back().name)) + " is not closed by \"0 ENDBLK\"");
  }
}

namespace {

// Notes an entity's pairs as they are read; an entity whose pairs do not follow one another
// (a line stepped over while recovering) or whose code line is too long to note is read
// again from its bytes when asked for.
class PairNotes {
 public:
  PairNotes(std::vector<PairRef>& pairs, const char* bytes, const Tag& first)
      : pairs_(pairs), bytes_(bytes), first_(static_cast<uint32_t>(pairs.size())), expected_(first.offset) {
    Add(first);
  }
  void Add(const Tag& t) {
    uint32_t valueAt = static_cast<uint32_t>(t.value.data() - bytes_) - t.offset;
    noted_ = noted_ && t.offset == expected_ && valueAt <= UINT16_MAX;
    expected_ = t.end;
    pairs_.push_back({t.offset, static_cast<int16_t>(t.code), static_cast<uint16_t>(valueAt)});
  }
  void Finish(EntityRecord& rec) {
    if (noted_ && expected_ == rec.end) {
      rec.firstPair = first_, rec.pairCount = static_cast<uint32_t>(pairs_.size()) - first_;
    } else {
      pairs_.resize(first_);
    }
  }

 private:
  std::vector<PairRef>& pairs_;
  const char* bytes_;
  uint32_t first_, expected_;
  bool noted_ = true;
};

}  // namespace

void Loader::Entities(int32_t block) {
  uint32_t owner = 0;
  while (have_ && !AtAny({"ENDSEC", "ENDBLK", "EOF"}) && !(block < 0 && At("SECTION"))) {
    if (cur_.code != 0) {
      Fail(cur_.line, "expected the start of an entity (group code 0), found " + Describe());
      Next();
      continue;
    }
    EntityRecord& rec = doc_.records_.emplace_back();
    rec.begin = cur_.offset;
    rec.line = cur_.line;
    rec.type = Keyword(cur_.value);
    rec.block = block;
    PairNotes notes(doc_.pairs_, doc_.bytes_.data(), cur_);
    ReadRecord([&](const Tag& t) {
      notes.Add(t);
      switch (t.code) {
        case 5:
          rec.handle = ParseHandle(t.value), doc_.hasHandles_ = true;
          doc_.highestHandle_ = std::max(doc_.highestHandle_, rec.handle);
          break;
        case 8: rec.layer = t.value; break;
        case 62:
          rec.colour = static_cast<int>(std::strtol(std::string(TrimNumber(t.value)).c_str(), nullptr, 10));
          doc_.spellsOutByLayer_ = doc_.spellsOutByLayer_ || rec.colour == 256;
          rec.colourPair = true;
          break;
        case 67: rec.paperSpace = TrimNumber(t.value) == "1"; break;
        case 1001: if (!rec.xdataBegin) rec.xdataBegin = t.offset; break;
        default: break;
      }
    });
    rec.end = Here();
    notes.Finish(rec);
    const uint32_t index = static_cast<uint32_t>(doc_.records_.size());
    if (block < 0) rec.segment = AddSegment(rec.begin, rec.end, index - 1);
    if (rec.type == "VERTEX" || rec.type == "ATTRIB" || rec.type == "SEQEND") {
      rec.owner = owner;
      if (rec.type == "SEQEND") owner = 0;
    } else {
      owner = (rec.type == "POLYLINE" || rec.type == "INSERT") ? index : 0;
    }
  }
}

namespace {

// Whether the text is UTF-16: a byte-order mark, or the NUL bytes that the ASCII of a DXF
// file's first line leaves in every other place.
bool LooksLikeUtf16(std::string_view bytes) {
  if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) return true;
  if (bytes.size() < 4) return false;
  return (bytes[1] == '\0' && bytes[3] == '\0' && bytes[0] != '\0') || (bytes[0] == '\0' && bytes[2] == '\0' && bytes[1] != '\0');
}

// Lines ended by CR alone: a CR in the first line that no LF follows. Only the first line is
// looked at, so that a large drawing is not searched for what it lacks.
bool EndsLinesWithCrAlone(std::string_view bytes) {
  size_t lf = bytes.find('\n');
  size_t cr = bytes.substr(0, lf).find('\r');
  return cr != std::string_view::npos && cr + 1 != lf;
}

// What no reading can get past: not ASCII DXF, or too large for the offsets kept. Each is
// named, so that the user knows what the file is and what to do with it.
std::optional<Error> Unreadable(std::string_view bytes) {
  if (bytes.starts_with(kUtf8Bom)) bytes.remove_prefix(kUtf8Bom.size());
  if (bytes.starts_with("AutoCAD Binary DXF"))
    return MakeError(ErrorCode::Unsupported, "a binary DXF file; save the drawing as ASCII DXF", 1);
  if (bytes.starts_with("AC10") || bytes.starts_with("AC1.") || bytes.starts_with("AC2."))
    return MakeError(ErrorCode::Unsupported, "a DWG drawing (version " + QuoteFileContent(bytes.substr(0, 6)) +
                                                 "), not DXF; open it in the CAD program and save it as DXF", 1);
  if (LooksLikeUtf16(bytes))
    return MakeError(ErrorCode::Unsupported,
                     "a UTF-16 text file; a DXF file is 8-bit text: save the drawing as DXF from the CAD program, or "
                     "convert the file to UTF-8 or the drawing's code page",
                     1);
  if (EndsLinesWithCrAlone(bytes))
    return MakeError(ErrorCode::Unsupported,
                     "its lines end with CR alone; a DXF file's lines end with CR LF or LF: convert the line ends "
                     "and open it again",
                     1);
  if (bytes.size() >= UINT32_MAX) return MakeError(ErrorCode::TooLarge, "the file is larger than 4 GB", 1);
  return std::nullopt;
}

}  // namespace

std::unique_ptr<Document> Document::LoadChecked(std::string bytes, bool recover, const ReadOptions& options,
                                                std::optional<Error>& error, std::vector<Problem>& problems,
                                                Audit* audit) {
  std::unique_ptr<Document> doc(new Document());
  doc->bytes_ = std::move(bytes);
  // Room for the pairs and entities of a typical file, so that neither list is copied as it
  // grows: pairs are rarely shorter than 10 bytes, entities than 64. Room not used is never
  // touched and costs no memory.
  doc->pairs_.reserve(doc->bytes_.size() / 10);
  doc->records_.reserve(doc->bytes_.size() / 64);
  Loader loader(*doc, recover, options.systemCodePage, audit);
  loader.Run();
  if (audit) audit->Finish(doc->bytes_);
  error = loader.error();
  problems = std::move(loader.problems());
  return doc;
}

Result<std::unique_ptr<Document>> Document::Read(std::string bytes, const ReadOptions& options) {
  if (std::optional<Error> unreadable = Unreadable(bytes)) return *unreadable;
  std::optional<Error> error;
  std::vector<Problem> problems;
  std::unique_ptr<Document> doc = LoadChecked(std::move(bytes), false, options, error, problems);
  if (error) return *error;
  return doc;
}

Result<Recovered> Document::Recover(std::string bytes, const ReadOptions& options) {
  if (std::optional<Error> unreadable = Unreadable(bytes)) return *unreadable;
  std::optional<Error> error;
  Recovered recovered;
  std::optional<Audit> audit;
  if (options.audit) audit.emplace();
  recovered.document = LoadChecked(std::move(bytes), true, options, error, recovered.problems, audit ? &*audit : nullptr);
  if (audit) recovered.findings = audit->findings(), recovered.xdata = audit->xdata(), recovered.entities = audit->entities();
  return recovered;
}

}  // namespace tq::dxf
