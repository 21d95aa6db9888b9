#include "base/Profile.hpp"

#include "base/Paths.hpp"

namespace tq {

namespace {

bool IsBigEndian(FileEncoding e) { return e == FileEncoding::Utf16BeBom || e == FileEncoding::Utf16Be; }

size_t UnitSize(FileEncoding e) {
  return (e == FileEncoding::Utf16LeBom || e == FileEncoding::Utf16Le || IsBigEndian(e)) ? 2 : 1;
}

bool IsUnit(std::string_view bytes, size_t at, FileEncoding e, char c) {
  if (UnitSize(e) == 1) return bytes[at] == c;
  bool big = IsBigEndian(e);
  return bytes[at + (big ? 1 : 0)] == c && bytes[at + (big ? 0 : 1)] == '\0';
}

Text DecodeLine(std::string_view bytes, FileEncoding e, const CodePage& systemCodePage) {
  switch (e) {
    case FileEncoding::SystemCodePage: return systemCodePage.Decode(bytes);
    case FileEncoding::Utf8:
    case FileEncoding::Utf8Bom: return FromUtf8(bytes);
    default: return DecodeTextFile((IsBigEndian(e) ? std::string("\xFE\xFF") : std::string("\xFF\xFE")) + std::string(bytes), systemCodePage).text;
  }
}

size_t BomSize(FileEncoding e) {
  switch (e) {
    case FileEncoding::Utf8Bom: return 3;
    case FileEncoding::Utf16LeBom:
    case FileEncoding::Utf16BeBom: return 2;
    default: return 0;
  }
}

Text Unquote(Text value) {
  if (value.size() >= 2 && (value.front() == u'"' || value.front() == u'\'') && value.back() == value.front())
    return value.substr(1, value.size() - 2);
  return value;
}

}  // namespace

ProfileFile ProfileFile::Read(const std::filesystem::path& path, const CodePage& systemCodePage) {
  ProfileFile file(systemCodePage);
  std::optional<std::string> bytes = ReadFileBytes(path);
  if (!bytes) return file;
  file.encoding_ = DecodeTextFile(*bytes, systemCodePage).encoding;
  file.bom_ = BomSize(file.encoding_) > 0;
  std::string_view all(*bytes);
  const size_t unit = UnitSize(file.encoding_);
  size_t start = BomSize(file.encoding_);
  bool sawCrLf = false, sawLf = false;
  while (start < all.size()) {
    size_t end = start;
    while (end + unit <= all.size() && !IsUnit(all, end, file.encoding_, '\n')) end += unit;
    size_t next = std::min(end + unit, all.size());
    size_t contentEnd = end;
    if (end < all.size()) {
      bool cr = contentEnd >= start + unit && IsUnit(all, contentEnd - unit, file.encoding_, '\r');
      if (cr) contentEnd -= unit;
      (cr ? sawCrLf : sawLf) = true;
    }
    file.lines_.push_back({DecodeLine(all.substr(start, contentEnd - start), file.encoding_, systemCodePage),
                           std::string(all.substr(start, next - start)), end < all.size()});
    start = next;
  }
  if (sawLf && !sawCrLf) file.newline_ = u"\n";
  return file;
}

ProfileFile::Kind ProfileFile::Classify(TextView text, Text& name, Text& value) {
  Text line = Trim(text);
  if (line.empty() || line[0] == u';') return Kind::Other;
  if (line[0] == u'[') {
    size_t close = line.find(u']');
    name = Trim(TextView(line).substr(1, close == Text::npos ? Text::npos : close - 1));
    return Kind::Section;
  }
  size_t eq = line.find(u'=');
  if (eq == Text::npos) return Kind::Other;
  name = Trim(TextView(line).substr(0, eq));
  value = Unquote(Trim(TextView(line).substr(eq + 1)));
  return Kind::Key;
}

// The first section of that name is the one searched, as Windows does.
std::optional<size_t> ProfileFile::FindKey(TextView section, TextView key, size_t* sectionEnd,
                                           bool* sectionFound) const {
  bool inSection = false;
  *sectionFound = false;
  for (size_t i = 0; i < lines_.size(); ++i) {
    Text name, value;
    Kind kind = Classify(lines_[i].text, name, value);
    if (kind == Kind::Section) {
      if (inSection) return std::nullopt;
      inSection = EqualNoCase(name, section);
      if (inSection) *sectionFound = true, *sectionEnd = i + 1;
    } else if (inSection && kind == Kind::Key) {
      *sectionEnd = i + 1;
      if (EqualNoCase(name, key)) return i;
    } else if (inSection && kind == Kind::Other && !Trim(lines_[i].text).empty()) {
      *sectionEnd = i + 1;
    }
  }
  return std::nullopt;
}

std::optional<Text> ProfileFile::Get(TextView section, TextView key) const {
  size_t end = 0;
  bool found = false;
  std::optional<size_t> at = FindKey(section, key, &end, &found);
  if (!at) return std::nullopt;
  Text name, value;
  Classify(lines_[*at].text, name, value);
  return value;
}

void ProfileFile::Set(TextView section, TextView key, TextView value) {
  size_t end = 0;
  bool sectionFound = false;
  std::optional<size_t> at = FindKey(section, key, &end, &sectionFound);
  if (at) {
    Text name, old;
    Classify(lines_[*at].text, name, old);
    lines_[*at] = {name + u"=" + Text(value), {}, true};
    return;
  }
  Line entry{Text(key) + u"=" + Text(value), {}, true};
  if (sectionFound) {
    lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(end), entry);
    return;
  }
  lines_.push_back({u"[" + Text(section) + u"]", {}, true});
  lines_.push_back(entry);
}

std::string ProfileFile::Bytes() const {
  std::string out = bom_ ? EncodeFile(u"", encoding_, *codePage_, true) : std::string();
  for (size_t i = 0; i < lines_.size(); ++i) {
    const Line& line = lines_[i];
    if (!line.raw.empty()) {
      out += line.raw;
      // A last line without a line end gets one when lines now follow it.
      if (!line.ended && i + 1 < lines_.size()) out += EncodeFile(newline_, encoding_, *codePage_, false);
    } else {
      out += EncodeFile(line.text + newline_, encoding_, *codePage_, false);
    }
  }
  return out;
}

Status ProfileFile::Write(const std::filesystem::path& path) const { return WriteFileBytes(path, Bytes()); }

Text ReadProfileString(TextView section, TextView key, TextView defaultValue, TextView path,
                       const CodePage& systemCodePage) {
  std::optional<Text> value = ProfileFile::Read(ToFsPath(path), systemCodePage).Get(section, key);
  Text result = value ? *value : Text(defaultValue);
  if (result.size() > kProfileBufferSize - 1) result.resize(kProfileBufferSize - 1);
  return result;
}

Status WriteProfileString(TextView section, TextView key, TextView value, TextView path,
                          const CodePage& systemCodePage) {
  if (path.empty()) return MakeError(ErrorCode::NotFound, u"no settings file to write to");
  std::filesystem::path fsPath = ToFsPath(path);
  ProfileFile file = ProfileFile::Read(fsPath, systemCodePage);
  file.Set(section, key, value);
  return file.Write(fsPath);
}

}  // namespace tq
