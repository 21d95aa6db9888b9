#pragma once
// The Drawing port over a DXF document.
#include <filesystem>
#include <memory>
#include <mutex>
#include <unordered_map>

#include "dxf/DxfDocument.hpp"
#include "dxf/Extents.hpp"
#include "dxf/OnceCache.hpp"
#include "dxf/SpatialIndex.hpp"
#include "ports/Drawing.hpp"

namespace tq::dxf {

class DxfDrawing : public Drawing {
 public:
  // The strict read of a file; an Error naming the line and reason when it cannot be read.
  static Result<std::unique_ptr<DxfDrawing>> Open(const std::filesystem::path& path, const ReadOptions& options = {});
  DxfDrawing(std::unique_ptr<Document> doc, std::filesystem::path path);

  Document& document() { return *doc_; }
  const Document& document() const { return *doc_; }
  // Atomic save (with a ".bak" of the previous file); to the drawing's own file by default.
  Status Save(const std::filesystem::path& path = {}, const os::FaultPlan* faults = nullptr) const;

  std::vector<ObjectId> SelectAll(const SelectionFilter& filter) const override;
  std::vector<ObjectId> SelectWindow(const SelectionFilter& filter, const Rect& window) const override;
  Text EntityType(ObjectId id) const override;
  std::optional<TextEntity> TextData(ObjectId id) const override;
  std::optional<LineEntity> LineData(ObjectId id) const override;
  std::optional<Point3> PointPosition(ObjectId id) const override;
  std::optional<Extents> EntityExtents(ObjectId id) const override;
  Text Layer(ObjectId id) const override;
  int ColourIndex(ObjectId id) const override;
  EditResult SetColourIndex(ObjectId id, int colour) override;
  std::vector<ObjectId> SubEntities(ObjectId id) const override;
  EditResult Erase(ObjectId id) override;
  std::optional<std::pair<double, double>> TextStyleExtents(TextView text) const override;
  Text Handle(ObjectId id) const override;
  ObjectId FindHandle(TextView handle) const override;
  ObjectId AddText(const TextEntity& text) override;
  ObjectId AddLine(const LineEntity& line) override;
  EditResult MoveLineEnd(ObjectId id, LineEnd end, const Point3& to) override;
  bool IsLayerLocked(TextView layer) const override;
  void SetLayerLocked(TextView layer, bool locked) override;
  std::optional<XDataLines> ReadXData(ObjectId id, TextView application) const override;
  EditResult WriteXData(ObjectId id, TextView application, const XDataLines& lines) override;
  EditResult RemoveXData(ObjectId id, TextView application) override;
  std::unique_ptr<WriteLock> LockForWrite() override;
  void FlushGraphics() override {}
  Text FileName() const override;

 private:
  struct LayerState {
    Text name;  // as the layer table spells it
    bool frozen = false;
    bool locked = false;
  };
  const EntityRecord* Record(ObjectId id) const;
  const LayerState& LayerOf(uint32_t index) const;
  const LayerState& LayerStateOf(std::string_view raw) const;
  bool Selectable(uint32_t index, const SelectionFilter& filter) const;
  void SetColour(uint32_t index, int colour);
  bool SpellsOutByLayer(const EditTag& pair) const;
  void InsertColour(uint32_t index, TagList& tags, int colour);
  ObjectId AddEntity(dxf::TagList tags);
  struct LineStyle {
    TextView linetype;  // empty: by layer
    int lineweight = kLineweightByLayer;
  };
  dxf::TagList EntityHead(std::string_view type, TextView layer, int colour, std::string_view subclass,
                          const LineStyle& style);
  void Moved(uint32_t index);
  void EnsureLayer(TextView layer);

  std::unique_ptr<Document> doc_;
  std::filesystem::path path_;
  struct RawHash {
    using is_transparent = void;
    size_t operator()(std::string_view s) const { return std::hash<std::string_view>{}(s); }
  };
  // What reads look up is filled on the first read, under a guard, so that a const drawing can
  // be read from several threads; edits, never concurrent with reads, keep it current or
  // forget it.
  mutable std::mutex layersMutex_;
  mutable std::unordered_map<std::string, LayerState, RawHash, std::equal_to<>> layerStates_;
  // Each record's entry of layerStates_, once looked up: no edit here moves an entity to
  // another layer. Both are forgotten when a layer is added or changes.
  mutable std::vector<const LayerState*> recordLayers_;
  void ForgetLayers();
  mutable OnceCache handlesCache_;
  mutable std::unordered_map<uint64_t, uint32_t> handles_;
  // The calculator keeps what it computed: one caller at a time.
  ExtentsCalculator& Calculator() const;
  mutable std::mutex extentsMutex_;
  mutable std::unique_ptr<ExtentsCalculator> extents_;
  void BuildIndex() const;
  Box WindowBox(uint32_t index) const;

  Text lastRegistered_;  // the application last written, registered since
  // Built on the first window query and kept current as entities are added.
  mutable OnceCache indexCache_;
  mutable std::unique_ptr<SpatialIndex> index_;
  mutable std::vector<uint32_t> indexedRecords_;  // item → record, ascending
};

}  // namespace tq::dxf
