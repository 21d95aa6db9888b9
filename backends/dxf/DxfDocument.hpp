#pragma once
// A DXF file held as its own bytes: what is not changed is written back byte for byte;
// only the records that changed are written anew.
#include <cstdint>
#include <deque>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Result.hpp"
#include "base/os/Os.hpp"
#include "base/Text.hpp"
#include "dxf/Audit.hpp"
#include "dxf/DxfCodec.hpp"
#include "dxf/LargePages.hpp"
#include "dxf/TagList.hpp"
#include "dxf/Tagger.hpp"

namespace tq::dxf {

// What the recover reader repaired or stepped over.
struct Problem {
  uint32_t line = 0;
  std::string message;
};

// How a file is read: the code page of a drawing that names none in $DWGCODEPAGE, as the
// Windows ANSI code page is to the programs that write such drawings.
// `audit`: the recover read also runs the checks of Audit and lists what they find.
struct ReadOptions {
  std::string systemCodePage = "CP932";
  bool audit = false;
};

class Document;

// A recovered read: the document, and what was repaired or stepped over to read it.
struct Recovered {
  std::unique_ptr<Document> document;
  std::vector<Problem> problems;
  std::vector<Finding> findings;  // the audit's, when asked for
  XDataStats xdata;               // likewise
  EntityCounts entities;          // likewise
};

inline constexpr uint32_t kNoSegment = UINT32_MAX;
inline constexpr uint32_t kNoRecord = UINT32_MAX;

// A run of the file, written back as it stands unless replaced (by the text at index
// `replacement` of the document's replacements) or, for the run of an entity, unless the
// entity was edited or erased.
struct Segment {
  Segment(uint32_t b, uint32_t e, uint32_t r = kNoRecord) : begin(b), end(e), record(r) {}
  uint32_t begin = 0, end = 0;
  int32_t replacement = -1;
  uint32_t record = kNoRecord;
};

// Where one pair of an entity lies in the file, noted while loading: the entity's tags are
// found again without reading its lines.
struct PairRef {
  uint32_t offset = 0;  // its code line
  int16_t code = 0;
  uint16_t valueAt = 0;  // its value line, counted from the code line
};

// An entity of the ENTITIES section or of a block definition.
struct EntityRecord {
  uint32_t begin = 0, end = 0;  // its bytes in the file (empty for a new entity)
  uint32_t line = 0;
  uint32_t segment = kNoSegment;  // none for a new entity
  std::string_view type;          // "TEXT", "LINE", …
  std::string_view layer;         // the raw layer name of group 8
  uint64_t handle = 0;
  int colour = 256;
  int32_t block = -1;  // the block definition holding it; -1 for the ENTITIES section
  uint32_t owner = 0;  // for VERTEX, ATTRIB and SEQEND: index + 1 of the POLYLINE or INSERT
  bool paperSpace = false;
  bool erased = false;
  bool colourPair = false;  // whether the file gives it a colour (group 62)
  uint32_t xdataBegin = 0;  // where the file's first group 1001 of it starts; 0 when it has none
  TagList* edit = nullptr;  // its tags once read for editing, written in place of its bytes
  uint32_t firstPair = 0, pairCount = 0;  // its pairs in the document's table; none when not noted
};

// An entry of the LAYER or APPID table.
struct TableEntry {
  uint32_t begin = 0, end = 0, line = 0;
  uint32_t segment = kNoSegment;
  Text name;
  int flags = 0;
  std::unique_ptr<TagList> edit;
};

struct TextStyle {
  Text name;
  double height = 0, widthFactor = 1;
};

struct BlockDefinition {
  Text name;
  double baseX = 0, baseY = 0, baseZ = 0;
  uint32_t firstRecord = 0, endRecord = 0;  // its entities: records [first, end)
};

class Document {
 public:
  // The strict read fails at the first thing it cannot read, with an Error of code Malformed
  // naming the line and the reason.
  static Result<std::unique_ptr<Document>> Read(std::string bytes, const ReadOptions& options = {});
  static Result<std::unique_ptr<Document>> ReadFile(const std::filesystem::path& path, const ReadOptions& options = {});
  // The recover read steps over what it cannot read and lists it; it fails only for what is
  // no ASCII DXF at all (a binary DXF, a file of 4 GB or more) or a file it cannot read.
  static Result<Recovered> Recover(std::string bytes, const ReadOptions& options = {});
  static Result<Recovered> RecoverFile(const std::filesystem::path& path, const ReadOptions& options = {});

  std::string_view source() const { return bytes_; }
  const DxfCodec& codec() const { return *codec_; }
  const std::string& version() const { return version_; }
  // $DWGCODEPAGE as the file gives it; empty when it gives none.
  const std::string& dwgCodePage() const { return dwgCodePage_; }
  bool isR12() const { return version_ < "AC1012"; }
  // Whether some entity of the file gives its by-layer colour as an explicit "62 256".
  bool spellsOutByLayer() const { return spellsOutByLayer_; }
  std::string_view lineEnd() const { return lineEnd_; }

  std::vector<EntityRecord>& records() { return records_; }
  const std::vector<EntityRecord>& records() const { return records_; }
  const std::vector<TableEntry>& layers() const { return layers_; }
  const std::vector<TableEntry>& appIds() const { return appIds_; }
  const std::vector<BlockDefinition>& blocks() const { return blocks_; }
  const std::vector<TextStyle>& textStyles() const { return textStyles_; }
  // $TEXTSTYLE and $TEXTSIZE of the header.
  const Text& currentTextStyle() const { return currentTextStyle_; }
  double textSize() const { return textSize_; }

  std::optional<size_t> FindLayer(TextView name) const;  // without regard to case, as AutoCAD
  std::optional<size_t> FindAppId(TextView name) const;
  std::optional<size_t> FindBlock(TextView name) const;

  // The record's tags: views into the file, or into its edit.
  std::vector<Tag> Tags(uint32_t index) const;
  void TagsInto(uint32_t index, std::vector<Tag>& tags) const;
  // Whether the record may hold extended data (false means it surely holds none).
  bool MayHaveXData(uint32_t index) const;
  // The record's tags from its first group 1001 on: all that extended data is read from.
  void XDataTagsInto(uint32_t index, std::vector<Tag>& tags) const;
  std::string_view LayerRaw(uint32_t index) const;
  // The record's tags for editing, written in place of its bytes from then on; Commit
  // notes the document changed.
  TagList& Edit(uint32_t index);
  void Commit(uint32_t index);
  // Where the values of edited tags are kept.
  StringStore& strings() { return strings_; }
  void Erase(uint32_t index);
  // A new entity of the ENTITIES section, written at its end; returns its index.
  uint32_t AddEntity(TagList tags);

  // Registers an application name (an APPID entry); returns its index.
  size_t AddAppId(TextView name);
  size_t AddLayer(TextView name);
  void SetLayerFlags(size_t index, int flags);

  // Handles for new records: above $HANDSEED and above every handle in the file, whatever
  // $HANDSEED says; the seed written on save is past the last one given out.
  bool hasHandles() const { return hasHandles_; }
  uint64_t NewHandle();
  // $HANDSEED as the file gives it (0 when it gives none), and the highest handle in use.
  uint64_t fileHandSeed() const { return fileHandSeed_; }
  uint64_t highestHandle() const { return highestHandle_; }
  const std::string& modelSpaceHandle() const { return modelSpaceHandle_; }

  // The extended data of every changed entity within the format's per-object limit; an
  // error naming the first entity that passes it.
  Status CheckXDataLimits() const;
  std::string Serialize() const;
  // Written to a temporary file beside the target, flushed and renamed over it; the
  // previous file is kept as ".bak", and when it cannot be nothing is saved. A failure leaves
  // the target as it was and says so. `faults` is for tests of those failures.
  Status Save(const std::filesystem::path& path, const os::FaultPlan* faults = nullptr) const;
  bool modified() const { return modified_; }

 private:
  friend class Loader;
  Document() = default;
  static std::unique_ptr<Document> LoadChecked(std::string bytes, bool recover, const ReadOptions& options,
                                               std::optional<Error>& error, std::vector<Problem>& problems,
                                               Audit* audit = nullptr);
  // What a save adds to the file's tables.
  struct Insertions {
    std::vector<const TableEntry*> appIds, layers;
  };
  void AppendInsertions(std::string& out, uint32_t segment, const Insertions& insertions) const;
  bool AppIdInUse(const TableEntry& entry) const;
  std::vector<const TableEntry*> NewEntries(const std::vector<TableEntry>& table) const;
  // The $HANDSEED a save writes; nothing when the file's stands.
  std::optional<uint64_t> WrittenHandSeed(const Insertions& insertions) const;
  // The whole file in pieces, in order: runs of the file's bytes and written text.
  template <class Sink>
  void WriteTo(Sink&& sink) const;
  // The segment is written as `text`, or as the file's bytes again when `text` equals them.
  void Replace(uint32_t segment, std::string text);
  const std::string* ReplacementOf(const Segment& segment) const {
    return segment.replacement < 0 ? nullptr : &replacements_[static_cast<size_t>(segment.replacement)];
  }
  TagList TableEntryTags(Kept type, Kept subclass, TextView name);
  // Pair `k` of a record whose pairs were noted, its offsets and line counted from pair `from`
  // as if the record were read from there.
  Tag NotedTag(const EntityRecord& rec, uint32_t k, uint32_t from) const;
  void NotedTagsInto(const EntityRecord& rec, uint32_t from, std::vector<Tag>& tags) const;
  TagList NotedTagList(const EntityRecord& rec);
  size_t AddTableEntry(std::vector<TableEntry>& table, uint32_t endSegment, const std::string& tableHandle,
                       TagList tags, TextView name);

  std::string bytes_;
  std::unique_ptr<DxfCodec> codec_;
  std::string version_ = "AC1009";
  std::string dwgCodePage_;
  std::string lineEnd_ = "\n";
  std::vector<Segment> segments_;
  std::vector<std::string> replacements_;
  StringStore strings_;
  // The entities' tag lists: hundreds of thousands for a marking, taken from large blocks and
  // given back all at once with the document.
  TagList* NewEdit(TagList tags);
  LargePages largePages_;
  std::pmr::monotonic_buffer_resource editMemory_{1 << 20, &largePages_};
  std::deque<TagList> edits_;
  std::vector<uint32_t> editedRecords_;  // the records with an edit, new ones included
  std::vector<std::unique_ptr<std::string>> ownedTypes_;  // the type names of new entities
  std::vector<EntityRecord> records_;
  std::vector<PairRef> pairs_;
  std::vector<uint32_t> newRecords_;
  std::vector<TableEntry> layers_, appIds_;
  std::vector<BlockDefinition> blocks_;
  std::vector<TextStyle> textStyles_;
  Text currentTextStyle_ = u"STANDARD";
  double textSize_ = 2.5;
  uint32_t entitiesEnd_ = kNoSegment, layerTableEnd_ = kNoSegment, appIdTableEnd_ = kNoSegment;
  // Where a missing APPID table is written: at the end of the TABLES section, or in a TABLES
  // section of its own before the first section that follows tables.
  uint32_t tablesEnd_ = kNoSegment, tablesSectionAt_ = kNoSegment;
  bool newAppIdTable_ = false;
  std::string newAppIdTableHandle_;
  std::string layerTableHandle_, appIdTableHandle_, modelSpaceHandle_;
  uint32_t handSeedSegment_ = kNoSegment;
  uint64_t handSeed_ = 0, fileHandSeed_ = 0, highestHandle_ = 0;
  bool hasHandles_ = false;
  bool spellsOutByLayer_ = false;
  bool handSeedKnown_ = false;
  bool modified_ = false;
  std::string tail_;  // what a recovered file lacked at its end ("ENDSEC", "EOF")
};

// Extended data of one entity, in bytes as AutoCAD counts them against its 16 KB limit.
size_t XDataSize(const std::vector<Tag>& tags);
size_t XDataSize(const TagList& tags);
size_t XDataTagSize(int code, std::string_view value);
inline constexpr size_t kXDataLimit = 16383;

}  // namespace tq::dxf
