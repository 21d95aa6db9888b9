#include "dxf/DxfDocument.hpp"

#include <stdexcept>

#include "base/os/Os.hpp"

namespace tq::dxf {

Result<std::unique_ptr<Document>> Document::ReadFile(const std::filesystem::path& path, const ReadOptions& options) {
  Result<std::string> bytes = os::ReadWholeFile(path);
  if (!bytes) return bytes.error();
  return Read(std::move(*bytes), options);
}

Result<Recovered> Document::RecoverFile(const std::filesystem::path& path, const ReadOptions& options) {
  Result<std::string> bytes = os::ReadWholeFile(path);
  if (!bytes) return bytes.error();
  return Recover(std::move(*bytes), options);
}

namespace {
template <class Table>
std::optional<size_t> FindByName(const Table& table, TextView name) {
  for (size_t i = 0; i < table.size(); ++i)
    if (EqualNoCase(table[i].name, name)) return i;
  return std::nullopt;
}
}  // namespace

std::optional<size_t> Document::FindLayer(TextView name) const { return FindByName(layers_, name); }
std::optional<size_t> Document::FindAppId(TextView name) const { return FindByName(appIds_, name); }
std::optional<size_t> Document::FindBlock(TextView name) const { return FindByName(blocks_, name); }

std::vector<Tag> Document::Tags(uint32_t index) const {
  std::vector<Tag> tags;
  TagsInto(index, tags);
  return tags;
}

Tag Document::NotedTag(const EntityRecord& rec, uint32_t k, uint32_t from) const {
  const PairRef& pair = pairs_[rec.firstPair + k];
  uint32_t end = k + 1 < rec.pairCount ? pairs_[rec.firstPair + k + 1].offset : rec.end;
  uint32_t valueBegin = pair.offset + pair.valueAt, valueEnd = end;
  if (valueEnd > valueBegin && bytes_[valueEnd - 1] == '\n') --valueEnd;
  if (valueEnd > valueBegin && bytes_[valueEnd - 1] == '\r') --valueEnd;
  uint32_t base = pairs_[rec.firstPair + from].offset;
  return Tag{pair.code, std::string_view(bytes_).substr(valueBegin, valueEnd - valueBegin), pair.offset - base, end - base,
             1 + 2 * (k - from)};
}

void Document::NotedTagsInto(const EntityRecord& rec, uint32_t from, std::vector<Tag>& tags) const {
  tags.clear();
  for (uint32_t k = from; k < rec.pairCount; ++k) tags.push_back(NotedTag(rec, k, from));
}

void Document::TagsInto(uint32_t index, std::vector<Tag>& tags) const {
  const EntityRecord& rec = records_[index];
  if (rec.edit) {
    tags.clear();
    for (const EditTag& t : *rec.edit) tags.push_back({t.code, t.value(), 0, 0, rec.line});
  } else if (rec.pairCount) {
    NotedTagsInto(rec, 0, tags);
  } else {
    ViewTagsInto(std::string_view(bytes_).substr(rec.begin, rec.end - rec.begin), tags);
  }
}

void Document::XDataTagsInto(uint32_t index, std::vector<Tag>& tags) const {
  const EntityRecord& rec = records_[index];
  if (rec.edit || !rec.xdataBegin) return TagsInto(index, tags);
  if (rec.pairCount) {
    uint32_t from = rec.pairCount;
    while (from > 0 && pairs_[rec.firstPair + from - 1].offset >= rec.xdataBegin) --from;
    return NotedTagsInto(rec, from, tags);
  }
  ViewTagsInto(std::string_view(bytes_).substr(rec.xdataBegin, rec.end - rec.xdataBegin), tags);
}

bool Document::MayHaveXData(uint32_t index) const {
  const EntityRecord& rec = records_[index];
  if (!rec.edit) return rec.xdataBegin != 0;
  for (const EditTag& t : *rec.edit)
    if (t.code == 1001) return true;
  return false;
}

std::string_view Document::LayerRaw(uint32_t index) const {
  const EntityRecord& rec = records_[index];
  if (!rec.edit) return rec.layer;
  const EditTag* layer = FindTag(*rec.edit, 8);
  return layer ? layer->value() : std::string_view();
}

TagList& Document::Edit(uint32_t index) {
  EntityRecord& rec = records_[index];
  if (!rec.edit) {
    rec.edit = NewEdit(rec.pairCount ? NotedTagList(rec) : ParseTags(std::string_view(bytes_).substr(rec.begin, rec.end - rec.begin), &editMemory_));
    editedRecords_.push_back(index);
  }
  return *rec.edit;
}

TagList Document::NotedTagList(const EntityRecord& rec) {
  TagList tags(&editMemory_);
  // Room for the few tags an edit adds: a colour, a group of extended data.
  tags.reserve(rec.pairCount + 4);
  for (uint32_t k = 0; k < rec.pairCount; ++k) {
    Tag t = NotedTag(rec, k, 0);
    tags.emplace_back(t.code, std::string_view(bytes_).substr(rec.begin + t.offset, t.end - t.offset), t.value);
  }
  return tags;
}

TagList* Document::NewEdit(TagList tags) {
  // Moved, the list keeps the memory it was made with.
  return &edits_.emplace_back(std::move(tags));
}

void Document::Replace(uint32_t segment, std::string text) {
  Segment& seg = segments_[segment];
  // A record changed back to what it was is written from the file again.
  if (text == std::string_view(bytes_).substr(seg.begin, seg.end - seg.begin)) {
    if (seg.replacement >= 0) replacements_[static_cast<size_t>(seg.replacement)].clear();
    seg.replacement = -1;
    return;
  }
  if (seg.replacement < 0) {
    seg.replacement = static_cast<int32_t>(replacements_.size());
    replacements_.emplace_back();
  }
  replacements_[static_cast<size_t>(seg.replacement)] = std::move(text);
}

void Document::Commit(uint32_t) { modified_ = true; }

void Document::Erase(uint32_t index) {
  for (uint32_t i = index; i < records_.size(); ++i) {
    if (i != index && records_[i].owner != index + 1) break;
    records_[i].erased = true;
  }
  modified_ = true;
}

uint32_t Document::AddEntity(TagList tags) {
  if (entitiesEnd_ == kNoSegment) throw std::runtime_error("the drawing has no ENTITIES section");
  EntityRecord& rec = records_.emplace_back();
  rec.edit = NewEdit(std::move(tags));
  editedRecords_.push_back(static_cast<uint32_t>(records_.size() - 1));
  if (const EditTag* type = FindTag(*rec.edit, 0)) {
    ownedTypes_.push_back(std::make_unique<std::string>(type->value()));
    rec.type = *ownedTypes_.back();
  }
  if (const EditTag* colour = FindTag(*rec.edit, 62)) rec.colour = std::atoi(std::string(colour->value()).c_str());
  newRecords_.push_back(static_cast<uint32_t>(records_.size() - 1));
  modified_ = true;
  return static_cast<uint32_t>(records_.size() - 1);
}

size_t Document::AddTableEntry(std::vector<TableEntry>& table, uint32_t endSegment, const std::string& tableHandle,
                               TagList tags, TextView name) {
  if (endSegment == kNoSegment) throw std::logic_error("no table to add \"" + ToUtf8(name) + "\" to");
  if (!isR12() && hasHandles_) {
    TagList head{EditTag(5, strings_.Keep(FormatHandle(NewHandle()))), EditTag(330, strings_.Keep(tableHandle))};
    tags.insert(tags.begin() + 1, head.begin(), head.end());
  }
  TableEntry& entry = table.emplace_back();
  entry.name = Text(name);
  entry.edit = std::make_unique<TagList>(std::move(tags));
  modified_ = true;
  return table.size() - 1;
}

// The head of a table entry: its type, the subclass markers from R13 on, its name and flags.
TagList Document::TableEntryTags(Kept type, Kept subclass, TextView name) {
  TagList tags{EditTag(0, type)};
  if (!isR12()) {
    tags.emplace_back(100, "AcDbSymbolTableRecord");
    tags.emplace_back(100, subclass);
  }
  tags.emplace_back(2, strings_.Keep(codec_->Encode(name)));
  tags.emplace_back(70, "     0");
  return tags;
}

size_t Document::AddAppId(TextView name) {
  if (appIdTableEnd_ == kNoSegment) {
    // A drawing without an APPID table gets one, at the end of its TABLES section or in a
    // TABLES section of its own.
    appIdTableEnd_ = tablesEnd_ != kNoSegment ? tablesEnd_ : tablesSectionAt_;
    if (appIdTableEnd_ == kNoSegment) throw std::logic_error("a drawing without sections holds no entity to register an application for");
    newAppIdTable_ = true;
    if (!isR12() && hasHandles_) appIdTableHandle_ = newAppIdTableHandle_ = FormatHandle(NewHandle());
  }
  return AddTableEntry(appIds_, appIdTableEnd_, appIdTableHandle_, TableEntryTags("APPID", "AcDbRegAppTableRecord", name), name);
}

size_t Document::AddLayer(TextView name) {
  TagList tags = TableEntryTags("LAYER", "AcDbLayerTableRecord", name);
  tags.emplace_back(62, "     7");
  tags.emplace_back(6, "CONTINUOUS");
  return AddTableEntry(layers_, layerTableEnd_, layerTableHandle_, std::move(tags), name);
}

void Document::SetLayerFlags(size_t index, int flags) {
  TableEntry& entry = layers_[index];
  if (entry.flags == flags) return;
  entry.flags = flags;
  if (!entry.edit) entry.edit = std::make_unique<TagList>(ParseTags(std::string_view(bytes_).substr(entry.begin, entry.end - entry.begin)));
  if (EditTag* tag = FindTag(*entry.edit, 70)) SetTagInt(*tag, flags, strings_);
  else entry.edit->emplace_back(70, strings_.Keep(FormatInt(70, flags)));
  modified_ = true;
  if (entry.segment != kNoSegment) Replace(entry.segment, dxf::Serialize(*entry.edit, lineEnd_));
}

uint64_t Document::NewHandle() {
  if (!handSeedKnown_) {
    handSeed_ = std::max(fileHandSeed_, highestHandle_ + 1);
    handSeedKnown_ = true;
  }
  modified_ = true;
  return handSeed_++;
}

bool Document::AppIdInUse(const TableEntry& entry) const {
  for (uint32_t i : editedRecords_) {
    const EntityRecord& rec = records_[i];
    if (!rec.edit || rec.erased) continue;
    for (const EditTag& t : *rec.edit)
      if (t.code == 1001 && codec_->EqualsNoCase(TrimNumber(t.value()), entry.name)) return true;
  }
  return false;
}

std::vector<const TableEntry*> Document::NewEntries(const std::vector<TableEntry>& table) const {
  std::vector<const TableEntry*> entries;
  for (const TableEntry& e : table)
    // An application registered for extended data that is no longer there leaves no trace.
    if (e.segment == kNoSegment && (&table != &appIds_ || AppIdInUse(e))) entries.push_back(&e);
  return entries;
}

std::optional<uint64_t> Document::WrittenHandSeed(const Insertions& insertions) const {
  uint64_t seed = fileHandSeed_;
  bool newHandles = !insertions.appIds.empty() || !insertions.layers.empty();
  for (uint32_t i : newRecords_) newHandles = newHandles || !records_[i].erased;
  // Past every handle given out, which are above every handle in use: a seed at or below one
  // is put right whenever something new is saved. With nothing new, the file's seed stands.
  if (newHandles && handSeedKnown_) seed = std::max(seed, handSeed_);
  if (seed == fileHandSeed_) return std::nullopt;
  return seed;
}

void Document::AppendInsertions(std::string& out, uint32_t segment, const Insertions& insertions) const {
  if (segment == entitiesEnd_)
    for (uint32_t i : newRecords_)
      if (!records_[i].erased) AppendSerialized(out, *records_[i].edit, lineEnd_);
  if (segment == appIdTableEnd_ && newAppIdTable_) {
    if (insertions.appIds.empty()) return;
    bool ownSection = segment != tablesEnd_;
    if (ownSection) out += FormatTag(0, "SECTION", lineEnd_) + FormatTag(2, "TABLES", lineEnd_);
    out += FormatTag(0, "TABLE", lineEnd_) + FormatTag(2, "APPID", lineEnd_);
    if (!newAppIdTableHandle_.empty())
      out += FormatTag(5, newAppIdTableHandle_, lineEnd_) + FormatTag(330, "0", lineEnd_) +
             FormatTag(100, "AcDbSymbolTable", lineEnd_);
    out += FormatTag(70, FormatInt(70, static_cast<long long>(insertions.appIds.size())), lineEnd_);
    for (const TableEntry* e : insertions.appIds) AppendSerialized(out, *e->edit, lineEnd_);
    out += FormatTag(0, "ENDTAB", lineEnd_);
    if (ownSection) out += FormatTag(0, "ENDSEC", lineEnd_);
    return;
  }
  for (auto [entries, end] : {std::pair{&insertions.appIds, appIdTableEnd_}, std::pair{&insertions.layers, layerTableEnd_}})
    if (segment == end)
      for (const TableEntry* e : *entries) AppendSerialized(out, *e->edit, lineEnd_);
}

template <class Sink>
void Document::WriteTo(Sink&& sink) const {
  // Adjacent runs of the file go out as one piece, and so does written text that follows
  // written text: a marking rewrites thousands of entities in a row.
  uint32_t runBegin = 0, runEnd = 0;
  std::string text;
  const Insertions insertions{NewEntries(appIds_), NewEntries(layers_)};
  std::optional<uint64_t> seed = WrittenHandSeed(insertions);
  auto flushRun = [&] {
    if (runEnd > runBegin) sink(std::string_view(bytes_).substr(runBegin, runEnd - runBegin));
    runBegin = runEnd = 0;
  };
  auto flushText = [&] {
    if (!text.empty()) sink(std::string_view(text));
    text.clear();
  };
  for (uint32_t i = 0; i < segments_.size(); ++i) {
    const Segment& s = segments_[i];
    size_t before = text.size();
    AppendInsertions(text, i, insertions);
    bool fromFile = true;
    if (i == handSeedSegment_ && seed) {
      text += FormatTag(5, FormatHandle(*seed), lineEnd_);
      fromFile = false;
    } else if (s.record != kNoRecord) {
      const EntityRecord& rec = records_[s.record];
      if (rec.edit && !rec.erased) AppendSerialized(text, *rec.edit, lineEnd_);
      fromFile = !rec.edit && !rec.erased;
    } else if (const std::string* replacement = ReplacementOf(s)) {
      text += *replacement;
      fromFile = false;
    }
    // Text is held back only while no run is: a run before it goes first. It goes out in
    // pieces of some hundred kilobytes: not a write per entity, nor a copy of them all.
    if (text.size() > before) flushRun();
    if (text.size() > (256u << 10)) flushText();
    if (!fromFile) continue;
    flushText();
    if (runEnd == s.begin && runEnd > runBegin) runEnd = s.end;
    else flushRun(), runBegin = s.begin, runEnd = s.end;
  }
  flushText(), flushRun();
  sink(std::string_view(tail_));
}

// One tag of extended data, in bytes as AutoCAD stores it. Strings are UTF-16 from 2007 on;
// counting each byte of the file's encoding as one unit never counts less than that.
size_t XDataTagSize(int code, std::string_view value) {
  if (code == 1000) return 3 + 2 * value.size();
  if (code == 1001 || code == 1003 || code == 1005) return 9;
  if (code == 1002) return 2;
  if (code == 1004) return 2 + value.size() / 2;
  if (code >= 1010 && code <= 1033) return 25;
  if (code >= 1040 && code <= 1042) return 9;
  if (code == 1070) return 3;
  if (code == 1071) return 5;
  return 1;
}

namespace {

template <class Tags>
size_t XDataSizeOf(const Tags& tags) {
  size_t size = 0;
  bool inXData = false;
  for (const auto& t : tags) {
    if (t.code == 1001) inXData = true;
    if (inXData) size += XDataTagSize(t.code, ValueOf(t));
  }
  return size;
}
}  // namespace

size_t XDataSize(const std::vector<Tag>& tags) { return XDataSizeOf(tags); }
size_t XDataSize(const TagList& tags) { return XDataSizeOf(tags); }

Status Document::CheckXDataLimits() const {
  for (uint32_t i : editedRecords_) {
    const EntityRecord& rec = records_[i];
    if (!rec.edit || rec.erased) continue;
    if (XDataSize(*rec.edit) > kXDataLimit)
      return MakeError(ErrorCode::TooLarge, "the extended data of entity " + FormatHandle(rec.handle) + " (" +
                                                std::string(rec.type) + ", line " + std::to_string(rec.line) +
                                                ") passes the 16 KB limit of a drawing object");
  }
  return {};
}

std::string Document::Serialize() const {
  std::string out;
  out.reserve(bytes_.size() + 4096);
  WriteTo([&](std::string_view piece) { out += piece; });
  return out;
}

namespace {
// What a failed save left: the file as it was, or no file where there was none.
Error NotSaved(const std::filesystem::path& path, bool existed, const Error& cause) {
  Error error = cause;
  error.message = FromUtf8("cannot save " + os::Shown(path) + ": " + cause.Describe() + "; " +
                           (existed ? os::Shown(path) + " is as it was" : std::string("nothing was written")));
  return error;
}
}  // namespace

Status Document::Save(const std::filesystem::path& path, const os::FaultPlan* faults) const {
  std::error_code ec;
  bool existed = std::filesystem::exists(path, ec);
  if (Status fits = CheckXDataLimits(); !fits) return NotSaved(path, existed, fits.error());
  Result<os::OutputFile> temp = os::CreateTempFileBeside(path, faults);
  if (!temp) return NotSaved(path, existed, temp.error());
  Status saved;
  WriteTo([&](std::string_view piece) {
    if (saved) saved = temp->Write(piece);
  });
  if (saved) saved = os::ReplaceKeepingBackup(std::move(*temp), path);
  else (void)os::Discard(std::move(*temp));
  if (!saved) return NotSaved(path, existed, saved.error());
  return {};
}

}  // namespace tq::dxf
