#include "dxf/Audit.hpp"

#include <algorithm>
#include <cstring>

#include "base/Encoding.hpp"
#include "base/Quote.hpp"
#include "dxf/DxfCodec.hpp"
#include "dxf/DxfDocument.hpp"
#include "dxf/TagList.hpp"

namespace tq::dxf {

namespace {

// Enough to show what is wrong with a file without drowning the rest.
constexpr size_t kUtf8Reports = 20;

// The first byte at or after `from` that is not ASCII; `bytes.size()` when none is.
size_t NextHighByte(std::string_view bytes, size_t from) {
  constexpr uint64_t kHigh = 0x8080808080808080ULL;
  size_t i = from;
  for (; i + 8 <= bytes.size(); i += 8) {
    uint64_t word;
    std::memcpy(&word, bytes.data() + i, 8);
    if (word & kHigh) break;
  }
  for (; i < bytes.size(); ++i)
    if (static_cast<unsigned char>(bytes[i]) >= 0x80) return i;
  return bytes.size();
}

}  // namespace

const char* ReleaseName(std::string_view acadVersion) {
  static constexpr std::pair<std::string_view, const char*> kReleases[] = {
      {"AC1009", "R12"},   {"AC1012", "R13"},   {"AC1014", "R14"},   {"AC1015", "R2000"}, {"AC1018", "R2004"},
      {"AC1021", "R2007"}, {"AC1024", "R2010"}, {"AC1027", "R2013"}, {"AC1032", "R2018"}};
  for (auto [version, name] : kReleases)
    if (version == acadVersion) return name;
  return nullptr;
}

void Audit::Check(const Tag& tag) {
  if (tag.code == 0) {
    StartRecord(tag);
    return;
  }
  if (expectSectionName_) {
    expectSectionName_ = false;
    std::string_view name = TrimNumber(tag.value);
    if (tag.code == 2)
      section_ = name == "HEADER" ? Section::Header : name == "ENTITIES" ? Section::Entities : name == "BLOCKS" ? Section::Blocks : Section::Other;
  }
  if (section_ == Section::Header) return HeaderTag(tag);
  if (tag.code == 67) paperSpace_ = TrimNumber(tag.value) == "1";
  // A dimension style gives its handle in group 105: its group 5 is the arrow block's name.
  else if ((tag.code == 5 && recordType_ != "DIMSTYLE") || tag.code == 105) OnHandle(tag);
  else if (tag.code >= 1000) OnXData(tag);
}

void Audit::HeaderTag(const Tag& tag) {
  if (tag.code == 9) variable_ = std::string(TrimNumber(tag.value));
  else if (variable_ == "$ACADVER" && tag.code == 1) version_ = std::string(TrimNumber(tag.value)), versionLine_ = tag.line + 1;
  else if (variable_ == "$DWGCODEPAGE" && tag.code == 3) codePage_ = std::string(TrimNumber(tag.value)), codePageLine_ = tag.line + 1;
}

void Audit::StartRecord(const Tag& tag) {
  EndRecord();
  recordLine_ = tag.line;
  std::string_view keyword = TrimNumber(tag.value);
  recordType_ = keyword, recordHandle_ = {}, paperSpace_ = false;
  // As the loader reads them: the records of the ENTITIES section, and those of the BLOCKS
  // section between a BLOCK and its ENDBLK.
  entity_ = section_ == Section::Entities || (section_ == Section::Blocks && keyword != "BLOCK" && keyword != "ENDBLK");
  if (keyword == "SECTION") {
    expectSectionName_ = true, sawSection_ = true, section_ = Section::Other, entity_ = false;
  } else if (keyword == "ENDSEC") {
    section_ = Section::Other, entity_ = false;
  } else if (keyword == "EOF" && !sawSection_) {
    Add(tag.line, "\"0 EOF\" stands before any section: nothing after it is read");
  }
}

void Audit::EndRecord() {
  EndXDataGroup();
  if (entity_) CountEntity();
  if (entity_ && inXData_) {
    ++xdata_.entities;
    if (xdataSize_ > xdata_.largest)
      xdata_.largest = xdataSize_, xdata_.largestLine = recordLine_, xdata_.largestType = recordType_,
      xdata_.largestHandle = recordHandle_;
  }
  if (xdataSize_ > kXDataLimit)
    Add(recordLine_, "the extended data of the " + std::string(recordType_) + " holds " + std::to_string(xdataSize_) +
                         " bytes, over the " + std::to_string(kXDataLimit) + " one drawing object may hold");
  xdataSize_ = 0, inXData_ = false;
}

void Audit::EndXDataGroup() {
  for (uint32_t line : openBraces_) Add(line, "a \"{\" of extended data (group 1002) is not closed by \"}\" in its group");
  openBraces_.clear();
}

void Audit::OnHandle(const Tag& tag) {
  std::string_view value = TrimNumber(tag.value);
  // More than sixteen digits is no handle, even when the first are zeros.
  std::optional<uint64_t> handle = value.size() <= 16 ? ParseHandleDigits(value) : std::nullopt;
  if (!handle) {
    Add(tag.line + 1, "the handle " + QuoteFileContent(value) + " is not hexadecimal");
    return;
  }
  if (tag.code == 5) recordHandle_ = value;
  handlesAscend_ = handlesAscend_ && (handles_.empty() || *handle > lastHandle_);
  lastHandle_ = *handle;
  handles_.push_back({*handle, tag.line + 1});
}

void Audit::OnXData(const Tag& tag) {
  if (tag.code == 1001) {
    EndXDataGroup(), inXData_ = true;
    if (entity_) CountApplication(TrimNumber(tag.value));
  }
  if (!inXData_) return;
  xdataSize_ += XDataTagSize(tag.code, tag.value);
  if (tag.code == 1000 && entity_) ++xdata_.strings;
  if (tag.code != 1002) return;
  std::string_view brace = TrimNumber(tag.value);
  if (brace == "{") openBraces_.push_back(tag.line + 1);
  else if (brace == "}" && !openBraces_.empty()) openBraces_.pop_back();
  else if (brace == "}") Add(tag.line + 1, "a \"}\" of extended data (group 1002) closes no \"{\"");
  else Add(tag.line + 1, "group 1002 holds " + QuoteFileContent(brace) + " where \"{\" or \"}\" belongs");
}

void Audit::CountApplication(std::string_view name) {
  // A drawing uses a few names, most entities the one of the entity before.
  auto& apps = xdata_.byApplication;
  auto found = std::find_if(apps.rbegin(), apps.rend(), [&](const auto& app) { return app.first == name; });
  if (found == apps.rend()) apps.emplace_back(name, 1);
  else ++found->second;
}

void Audit::CountEntity() {
  if (section_ != Section::Entities || paperSpace_) return void(++entities_.other);
  // Entities of one type mostly follow one another: the last type counted is tried first.
  auto& types = entities_.modelSpace;
  auto found = std::find_if(types.rbegin(), types.rend(), [&](const auto& type) { return type.first == recordType_; });
  if (found == types.rend()) types.emplace_back(recordType_, 1);
  else ++found->second;
}

void Audit::CheckDuplicateHandles() {
  // Most writers give handles in ascending order: then none can repeat, and no sort is needed.
  if (handlesAscend_) return;
  std::stable_sort(handles_.begin(), handles_.end(), [](const HandleAt& a, const HandleAt& b) { return a.handle < b.handle; });
  for (size_t i = 1; i < handles_.size(); ++i)
    if (handles_[i].handle == handles_[i - 1].handle)
      Add(handles_[i].line, "the handle " + FormatHandle(handles_[i].handle) + " is also given on line " +
                                std::to_string(handles_[i - 1].line));
}

void Audit::CheckUtf8(std::string_view bytes) {
  size_t reported = 0, lineStart = 0;
  uint32_t line = 1;
  for (size_t at = NextHighByte(bytes, 0); at < bytes.size(); at = NextHighByte(bytes, at)) {
    line += static_cast<uint32_t>(std::count(bytes.begin() + static_cast<std::ptrdiff_t>(lineStart),
                                             bytes.begin() + static_cast<std::ptrdiff_t>(at), '\n'));
    size_t begin = bytes.rfind('\n', at);
    begin = begin == std::string_view::npos ? 0 : begin + 1;
    size_t end = bytes.find('\n', at);
    end = end == std::string_view::npos ? bytes.size() : end;
    if (!IsValidUtf8(bytes.substr(begin, end - begin)) && reported++ < kUtf8Reports)
      Add(line, "invalid UTF-8 in a drawing of release AC1021 or later, which is written in UTF-8");
    lineStart = at, at = end;
  }
  if (reported > kUtf8Reports)
    Add(0, std::to_string(reported - kUtf8Reports) + " more lines hold invalid UTF-8");
}

void Audit::Finish(std::string_view bytes) {
  EndRecord();
  CheckDuplicateHandles();
  if (!version_.empty() && !ReleaseName(version_))
    Add(versionLine_, "$ACADVER " + QuoteFileContent(version_) + " is not a release known here");
  std::string upper = codePage_;
  for (char& c : upper) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  if (!codePage_.empty() && upper != "UNDEFINED" && IcuNameOfDwgCodePage(codePage_).empty())
    Add(codePageLine_, "$DWGCODEPAGE " + QuoteFileContent(codePage_) + " is not a code page known here");
  if (version_ >= "AC1021") CheckUtf8(bytes);
  std::stable_sort(findings_.begin(), findings_.end(), [](const Finding& a, const Finding& b) { return a.line < b.line; });
}

}  // namespace tq::dxf
