#pragma once
// The checks of a drawing that reading does not need: each pair is shown to the audit as the
// loader reads it, so that checking costs no second pass over the file.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "dxf/Tagger.hpp"

namespace tq::dxf {

// One thing found wrong, with the line of the file it stands on.
struct Finding {
  uint32_t line = 0;
  std::string message;
};

// $ACADVER values of the releases this reader knows, and their names ("R2004"); nothing for
// another value.
const char* ReleaseName(std::string_view acadVersion);

// The extended data of the entities (those of the ENTITIES section and of the block
// definitions), counted as they are read. Names and values view the file.
struct XDataStats {
  std::vector<std::pair<std::string_view, size_t>> byApplication;  // groups per name as the file spells it
  size_t entities = 0, strings = 0;
  size_t largest = 0;  // in bytes as AutoCAD counts them
  uint32_t largestLine = 0;
  std::string_view largestType, largestHandle;
};

// The entities counted as they are read: those of model space by type (views into the file,
// in the order first met), and the others (in blocks or in paper space).
struct EntityCounts {
  std::vector<std::pair<std::string_view, size_t>> modelSpace;
  size_t other = 0;
};

class Audit {
  enum class Section : uint8_t { Other, Header, Entities, Blocks };

 public:
  // Every pair the loader reads; most (coordinates, layers, colours) concern no check and
  // cost a comparison here rather than a call.
  void OnTag(const Tag& tag) {
    if (tag.code == 0 || tag.code == 5 || tag.code >= 1000 || tag.code == 105 || tag.code == 67 || expectSectionName_ ||
        section_ == Section::Header)
      Check(tag);
  }
  // After the last pair: what is left open, the header's values, and the file's bytes as a
  // whole (UTF-8 from AC1021 on).
  void Finish(std::string_view bytes);
  const std::vector<Finding>& findings() const { return findings_; }
  const XDataStats& xdata() const { return xdata_; }
  const EntityCounts& entities() const { return entities_; }

 private:
  void Check(const Tag& tag);
  struct HandleAt {
    uint64_t handle;
    uint32_t line;
  };
  void StartRecord(const Tag& tag);
  void EndRecord();
  void EndXDataGroup();
  void OnHandle(const Tag& tag);
  void OnXData(const Tag& tag);
  void CheckDuplicateHandles();
  void CheckUtf8(std::string_view bytes);
  void Add(uint32_t line, std::string message) { findings_.push_back({line, std::move(message)}); }
  void HeaderTag(const Tag& tag);
  void CountApplication(std::string_view name);
  void CountEntity();

  std::vector<Finding> findings_;
  XDataStats xdata_;
  EntityCounts entities_;
  // Where the pairs stand: the section and, in the header, the variable.
  Section section_ = Section::Other;
  std::string variable_;
  bool expectSectionName_ = false, sawSection_ = false;
  std::string version_, codePage_;
  uint32_t versionLine_ = 0, codePageLine_ = 0;
  // The record being read.
  uint32_t recordLine_ = 0;
  std::string_view recordType_, recordHandle_;  // view the file, which outlives the reading
  bool entity_ = false;  // the record is an entity
  bool paperSpace_ = false;
  size_t xdataSize_ = 0;
  bool inXData_ = false;
  std::vector<uint32_t> openBraces_;  // the lines of the "{" not yet closed in this group
  std::vector<HandleAt> handles_;
  uint64_t lastHandle_ = 0;
  bool handlesAscend_ = true;
};

}  // namespace tq::dxf
