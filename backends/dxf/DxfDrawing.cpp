#include "dxf/DxfDrawing.hpp"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <memory_resource>
#include <thread>

#include "base/Paths.hpp"
#include "dxf/TagValues.hpp"
#include "dxf/XData.hpp"

namespace tq::dxf {

namespace {
ObjectId IdOf(uint32_t index) { return ObjectId{index + 1}; }

Point3 PointOf(const std::vector<Tag>& tags, int code) { return FirstPoint(tags, code).value_or(Point3{}); }

class DxfWriteLock : public Drawing::WriteLock {};

// Entity type names are ASCII: compared byte by byte, without regard to case.
bool SameType(std::string_view type, TextView wanted) {
  if (type.size() != wanted.size()) return false;
  for (size_t i = 0; i < type.size(); ++i) {
    char16_t a = static_cast<unsigned char>(type[i]), b = wanted[i];
    if (a >= u'a' && a <= u'z') a -= 32;
    if (b >= u'a' && b <= u'z') b -= 32;
    if (a != b) return false;
  }
  return true;
}

// A buffer of tags for reads, one per thread: reads of one drawing may run on several.
std::vector<Tag>& ThreadScratch() {
  thread_local std::vector<Tag> tags;
  return tags;
}

}  // namespace

Result<std::unique_ptr<DxfDrawing>> DxfDrawing::Open(const std::filesystem::path& path, const ReadOptions& options) {
  Result<std::unique_ptr<Document>> doc = Document::ReadFile(path, options);
  if (!doc) return doc.error();
  return std::make_unique<DxfDrawing>(std::move(doc).value(), path);
}

DxfDrawing::DxfDrawing(std::unique_ptr<Document> doc, std::filesystem::path path)
    : doc_(std::move(doc)), path_(std::move(path)), recordLayers_(doc_->records().size()) {}

Status DxfDrawing::Save(const std::filesystem::path& path, const os::FaultPlan* faults) const {
  return doc_->Save(path.empty() ? path_ : path, faults);
}

const EntityRecord* DxfDrawing::Record(ObjectId id) const {
  if (id.isNull() || id.value > doc_->records().size()) return nullptr;
  const EntityRecord& rec = doc_->records()[id.value - 1];
  return rec.erased ? nullptr : &rec;
}

// Looked up on a record's first read and kept: a slot read and written atomically, the table
// of layer states filled under the lock, so that reads from several threads meet safely.
const DxfDrawing::LayerState& DxfDrawing::LayerOf(uint32_t index) const {
  std::atomic_ref<const LayerState*> slot(recordLayers_[index]);
  if (const LayerState* known = slot.load(std::memory_order_acquire)) return *known;
  std::lock_guard lock(layersMutex_);
  const LayerState* state = &LayerStateOf(doc_->LayerRaw(index));
  slot.store(state, std::memory_order_release);
  return *state;
}

const DxfDrawing::LayerState& DxfDrawing::LayerStateOf(std::string_view raw) const {
  auto found = layerStates_.find(raw);
  if (found != layerStates_.end()) return found->second;
  LayerState state;
  Text decoded = doc_->codec().Decode(raw);
  if (auto layer = doc_->FindLayer(decoded)) {
    const TableEntry& entry = doc_->layers()[*layer];
    state = {entry.name, (entry.flags & 1) != 0, (entry.flags & 4) != 0};
  } else {
    state.name = decoded;
  }
  return layerStates_.emplace(std::string(raw), state).first->second;
}

void DxfDrawing::ForgetLayers() {
  layerStates_.clear();
  recordLayers_.assign(doc_->records().size(), nullptr);
}

bool DxfDrawing::Selectable(uint32_t index, const SelectionFilter& filter) const {
  const EntityRecord& rec = doc_->records()[index];
  if (rec.erased || rec.block >= 0 || rec.owner != 0 || rec.paperSpace) return false;
  if (!filter.type.empty() && !SameType(rec.type, filter.type)) return false;
  const LayerState& layer = LayerOf(index);
  if (layer.frozen) return false;
  // Selection filters compare layer names without regard to case, as AutoCAD's do.
  return filter.layer.empty() || EqualNoCase(layer.name, filter.layer);
}

std::vector<ObjectId> DxfDrawing::SelectAll(const SelectionFilter& filter) const {
  std::vector<ObjectId> ids;
  for (uint32_t i = 0; i < doc_->records().size(); ++i)
    if (Selectable(i, filter)) ids.push_back(IdOf(i));
  return ids;
}

ExtentsCalculator& DxfDrawing::Calculator() const {
  if (!extents_) extents_ = std::make_unique<ExtentsCalculator>(*doc_);
  return *extents_;
}

Box DxfDrawing::WindowBox(uint32_t index) const {
  std::lock_guard lock(extentsMutex_);
  return Calculator().WindowBoxOf(index);
}

// The boxes of a large drawing are computed on two threads, each with a calculator of its
// own over the unchanging document, taking the entities in chunks; the extents found are
// kept for later queries.
void DxfDrawing::BuildIndex() const {
  const auto& records = doc_->records();
  indexedRecords_.clear();
  for (uint32_t i = 0; i < records.size(); ++i) {
    const EntityRecord& rec = records[i];
    if (rec.block < 0 && rec.owner == 0 && !rec.paperSpace) indexedRecords_.push_back(i);
  }
  const size_t n = indexedRecords_.size(), chunk = 4096;
  std::vector<FlatBox> windows(n);
  std::vector<Box> boxes(records.size());
  std::vector<char> known(records.size());
  std::atomic<size_t> next{0};
  auto compute = [&] {
    ExtentsCalculator calculator(*doc_);
    for (size_t from; (from = next.fetch_add(chunk)) < n;)
      for (size_t k = from; k < std::min(n, from + chunk); ++k) {
        uint32_t i = indexedRecords_[k];
        boxes[i] = calculator.Fresh(i);
        known[i] = 1;
        windows[k] = FlatBox(calculator.WindowBoxFrom(i, boxes[i]));
      }
  };
  if (n > 20000 && std::thread::hardware_concurrency() > 1) {
    std::thread second(compute);
    compute();
    second.join();
  } else {
    compute();
  }
  {
    std::lock_guard lock(extentsMutex_);
    Calculator().Adopt(std::move(boxes), std::move(known));
  }
  index_ = std::make_unique<SpatialIndex>(std::move(windows));
}

std::vector<ObjectId> DxfDrawing::SelectWindow(const SelectionFilter& filter, const Rect& window) const {
  indexCache_.Ensure([&] { BuildIndex(); });
  std::vector<ObjectId> ids;
  for (uint32_t item : index_->Query(window.minX, window.minY, window.maxX, window.maxY)) {
    uint32_t index = indexedRecords_[item];
    if (Selectable(index, filter)) ids.push_back(IdOf(index));
  }
  return ids;
}

std::optional<std::pair<double, double>> DxfDrawing::TextStyleExtents(TextView text) const {
  // The current style's height (the drawing's text size when the style leaves it 0) and
  // width factor, with the character-width model of the extents.
  double height = doc_->textSize(), widthFactor = 1;
  for (const TextStyle& style : doc_->textStyles())
    if (EqualNoCase(style.name, doc_->currentTextStyle())) {
      if (style.height > 0) height = style.height;
      widthFactor = style.widthFactor > 0 ? style.widthFactor : 1;
      break;
    }
  return std::pair{TextWidthInHeights(text) * height * widthFactor, height};
}

Text DxfDrawing::EntityType(ObjectId id) const {
  const EntityRecord* rec = Record(id);
  return rec ? doc_->codec().Decode(rec->type) : Text();
}

std::optional<TextEntity> DxfDrawing::TextData(ObjectId id) const {
  const EntityRecord* rec = Record(id);
  if (!rec || (rec->type != "TEXT" && rec->type != "ATTRIB" && rec->type != "ATTDEF")) return std::nullopt;
  std::vector<Tag>& tags = ThreadScratch();
  doc_->TagsInto(id.value - 1, tags);
  TextEntity text;
  for (const Tag& t : tags)
    if (t.code == 1) {
      text.string = doc_->codec().Decode(t.value);
      break;
    }
  text.position = PointOf(tags, 10);
  text.height = NumberOf(tags, 40, 0);
  text.widthFactor = NumberOf(tags, 41, 1);
  text.rotation = NumberOf(tags, 50, 0);
  text.layer = LayerOf(id.value - 1).name;
  text.colour = rec->colour;
  return text;
}

std::optional<LineEntity> DxfDrawing::LineData(ObjectId id) const {
  const EntityRecord* rec = Record(id);
  if (!rec || rec->type != "LINE") return std::nullopt;
  std::vector<Tag> tags = doc_->Tags(id.value - 1);
  LineEntity line{PointOf(tags, 10), PointOf(tags, 11), LayerOf(id.value - 1).name, rec->colour, Text(),
                  kLineweightByLayer};
  for (const Tag& t : tags) {
    if (t.code == 1001) break;
    if (t.code == 6) line.linetype = doc_->codec().Decode(t.value);
    long long weight = 0;
    if (t.code == 370 && ParseInt(t.value, weight)) line.lineweight = static_cast<int>(weight);
  }
  return line;
}

std::optional<Point3> DxfDrawing::PointPosition(ObjectId id) const {
  const EntityRecord* rec = Record(id);
  if (!rec || rec->type != "POINT") return std::nullopt;
  return PointOf(doc_->Tags(id.value - 1), 10);
}

std::optional<Extents> DxfDrawing::EntityExtents(ObjectId id) const {
  if (!Record(id)) return std::nullopt;
  std::lock_guard lock(extentsMutex_);
  return Calculator().Of(id.value - 1);
}

Text DxfDrawing::Layer(ObjectId id) const { return Record(id) ? LayerOf(id.value - 1).name : Text(); }

int DxfDrawing::ColourIndex(ObjectId id) const {
  const EntityRecord* rec = Record(id);
  return rec ? rec->colour : kColourByLayer;
}

// By-layer is written as no colour tag at all, as AutoCAD writes it, unless the file held an
// explicit 256 there or its writer spells by-layer out: so marking and restoring leave the
// entity as it was, also when the marked drawing was saved in between.
void DxfDrawing::SetColour(uint32_t index, int colour) {
  EntityRecord& rec = doc_->records()[index];
  if (rec.colour == colour && !rec.edit) return;
  TagList& tags = doc_->Edit(index);
  auto found = std::find_if(tags.begin(), tags.end(), [](const EditTag& t) { return t.code == 62; });
  if (found != tags.end()) {
    if (colour == kColourByLayer && !SpellsOutByLayer(*found)) tags.erase(found);
    else SetTagInt(*found, colour, doc_->strings());
  } else if (colour != kColourByLayer || rec.colourPair) {
    InsertColour(index, tags, colour);
  }
  rec.colour = colour;
  doc_->Commit(index);
}

// Whether by-layer is written as "62 256" in place of this pair: where the file has it so, where
// its writer spells by-layer out elsewhere, or where the pair was not written as a marking
// writes a pair it adds (that is, the file's own pair had another colour written in its place).
bool DxfDrawing::SpellsOutByLayer(const EditTag& pair) const {
  if (pair.isNew()) return false;
  long long original = 0;
  if (ParseInt(pair.originalValue(), original) && original == kColourByLayer) return true;
  return doc_->spellsOutByLayer() || pair.originalValue() != FormatInt(62, original);
}

// The file's own pair when it held this colour goes back where it stood, as it was written;
// else a new pair follows the layer.
void DxfDrawing::InsertColour(uint32_t index, TagList& tags, int colour) {
  const EntityRecord& rec = doc_->records()[index];
  std::vector<Tag>& file = ThreadScratch();
  if (rec.colourPair) ViewTagsInto(doc_->source().substr(rec.begin, rec.end - rec.begin), file);
  else file.clear();
  for (size_t k = 0; k < file.size(); ++k) {
    long long value = 0;
    if (file[k].code != 62 || !ParseInt(file[k].value, value) || value != colour) continue;
    std::string_view pair = doc_->source().substr(rec.begin + file[k].offset, file[k].end - file[k].offset);
    tags.insert(tags.begin() + static_cast<std::ptrdiff_t>(std::min(k, tags.size())), EditTag(62, pair, file[k].value));
    return;
  }
  if (colour == kColourByLayer) return;
  auto layer = std::find_if(tags.begin(), tags.end(), [](const EditTag& t) { return t.code == 8; });
  tags.insert(layer == tags.end() ? tags.end() : layer + 1, EditTag(62, doc_->strings().Keep(FormatInt(62, colour))));
}

EditResult DxfDrawing::SetColourIndex(ObjectId id, int colour) {
  if (!Record(id)) return EditResult::NotFound;
  if (LayerOf(id.value - 1).locked) return EditResult::OnLockedLayer;
  uint32_t index = id.value - 1;
  SetColour(index, colour);
  // The end of the sequence has no colour to be seen: it keeps its own.
  for (uint32_t i = index + 1; i < doc_->records().size() && doc_->records()[i].owner == index + 1; ++i)
    if (doc_->records()[i].type != "SEQEND") SetColour(i, colour);
  return EditResult::Ok;
}

std::vector<ObjectId> DxfDrawing::SubEntities(ObjectId id) const {
  std::vector<ObjectId> subs;
  if (!Record(id)) return subs;
  const auto& records = doc_->records();
  for (uint32_t i = id.value; i < records.size() && records[i].owner == id.value; ++i)
    if (!records[i].erased && records[i].type != "SEQEND") subs.push_back(IdOf(i));
  return subs;
}

EditResult DxfDrawing::Erase(ObjectId id) {
  if (!Record(id)) return EditResult::NotFound;
  if (LayerOf(id.value - 1).locked) return EditResult::OnLockedLayer;
  doc_->Erase(id.value - 1);
  return EditResult::Ok;
}

Text DxfDrawing::Handle(ObjectId id) const {
  const EntityRecord* rec = Record(id);
  if (!rec || rec->handle == 0) return Text();
  std::string h = FormatHandle(rec->handle);
  return Text(h.begin(), h.end());
}

ObjectId DxfDrawing::FindHandle(TextView handle) const {
  handlesCache_.Ensure([&] {
    for (uint32_t i = 0; i < doc_->records().size(); ++i)
      if (doc_->records()[i].handle) handles_.emplace(doc_->records()[i].handle, i);
  });
  std::string h = ToUtf8(handle);
  auto found = handles_.find(std::strtoull(h.c_str(), nullptr, 16));
  if (found == handles_.end() || doc_->records()[found->second].erased) return ObjectId{};
  return IdOf(found->second);
}

void DxfDrawing::EnsureLayer(TextView layer) {
  if (!doc_->FindLayer(layer)) doc_->AddLayer(layer), ForgetLayers();
}

TagList DxfDrawing::EntityHead(std::string_view type, TextView layer, int colour, std::string_view subclass,
                               const LineStyle& style) {
  EnsureLayer(layer);
  StringStore& strings = doc_->strings();
  TagList tags{EditTag(0, strings.Keep(type))};
  if (doc_->hasHandles()) tags.emplace_back(5, strings.Keep(FormatHandle(doc_->NewHandle())));
  if (!doc_->isR12()) {
    if (!doc_->modelSpaceHandle().empty()) tags.emplace_back(330, strings.Keep(doc_->modelSpaceHandle()));
    tags.emplace_back(100, "AcDbEntity");
  }
  tags.emplace_back(8, strings.Keep(doc_->codec().Encode(layer)));
  if (!style.linetype.empty()) tags.emplace_back(6, strings.Keep(doc_->codec().Encode(style.linetype)));
  if (colour != kColourByLayer) tags.emplace_back(62, strings.Keep(FormatInt(62, colour)));
  // Lineweights came with R2000; older versions have no group for them.
  if (style.lineweight != kLineweightByLayer && doc_->version() >= "AC1015")
    tags.emplace_back(370, strings.Keep(FormatInt(370, style.lineweight)));
  if (!doc_->isR12()) tags.emplace_back(100, strings.Keep(subclass));
  return tags;
}

ObjectId DxfDrawing::AddEntity(TagList tags) {
  uint32_t index = doc_->AddEntity(std::move(tags));
  if (indexCache_.ready()) {
    indexedRecords_.push_back(index);
    index_->Insert(static_cast<uint32_t>(indexedRecords_.size() - 1), WindowBox(index));
  }
  EntityRecord& rec = doc_->records()[index];
  if (rec.handle == 0)
    if (const EditTag* h = FindTag(*rec.edit, 5)) rec.handle = std::strtoull(std::string(h->value()).c_str(), nullptr, 16);
  if (handlesCache_.ready() && rec.handle) handles_.emplace(rec.handle, index);
  recordLayers_.push_back(nullptr);
  return IdOf(index);
}

ObjectId DxfDrawing::AddText(const TextEntity& text) {
  TagList tags = EntityHead("TEXT", text.layer, text.colour, "AcDbText", LineStyle{});
  auto add = [&](int code, const std::string& value) { tags.emplace_back(code, doc_->strings().Keep(value)); };
  add(10, FormatDouble(text.position.x));
  add(20, FormatDouble(text.position.y));
  add(30, FormatDouble(text.position.z));
  add(40, FormatDouble(text.height));
  add(1, doc_->codec().Encode(text.string));
  if (text.rotation != 0) add(50, FormatDouble(text.rotation));
  if (text.widthFactor != 1) add(41, FormatDouble(text.widthFactor));
  if (!doc_->isR12()) tags.emplace_back(100, "AcDbText");
  return AddEntity(std::move(tags));
}

ObjectId DxfDrawing::AddLine(const LineEntity& line) {
  TagList tags = EntityHead("LINE", line.layer, line.colour, "AcDbLine", {line.linetype, line.lineweight});
  StringStore& strings = doc_->strings();
  for (auto [code, p] : {std::pair{10, line.start}, std::pair{11, line.end}}) {
    tags.emplace_back(code, strings.Keep(FormatDouble(p.x)));
    tags.emplace_back(code + 10, strings.Keep(FormatDouble(p.y)));
    tags.emplace_back(code + 20, strings.Keep(FormatDouble(p.z)));
  }
  return AddEntity(std::move(tags));
}

EditResult DxfDrawing::MoveLineEnd(ObjectId id, LineEnd end, const Point3& to) {
  const EntityRecord* rec = Record(id);
  // Model space only: the boxes of a block's references are not computed again.
  if (!rec || rec->type != "LINE" || rec->block >= 0) return EditResult::NotFound;
  if (LayerOf(id.value - 1).locked) return EditResult::OnLockedLayer;
  uint32_t index = id.value - 1;
  TagList& tags = doc_->Edit(index);
  const int x = end == LineEnd::Start ? 10 : 11;
  auto entityEnd = std::find_if(tags.begin(), tags.end(), [](const EditTag& t) { return t.code == 1001; });
  auto at = [&](int code) { return std::find_if(tags.begin(), entityEnd, [code](const EditTag& t) { return t.code == code; }); };
  for (auto [code, value] : {std::pair{x, to.x}, std::pair{x + 10, to.y}, std::pair{x + 20, to.z}}) {
    auto found = at(code);
    if (found != entityEnd) {
      found->Set(doc_->strings().Keep(FormatDouble(value)));
    } else if (value != 0) {
      // A 2D line of an old file may leave its Z out: it goes after the Y.
      auto y = at(code - 10);
      tags.insert(y == entityEnd ? entityEnd : y + 1, EditTag(code, doc_->strings().Keep(FormatDouble(value))));
      entityEnd = std::find_if(tags.begin(), tags.end(), [](const EditTag& t) { return t.code == 1001; });
    }
  }
  doc_->Commit(index);
  Moved(index);
  return EditResult::Ok;
}

// The entity's extents are computed anew, and the window index looks at it where it now lies.
void DxfDrawing::Moved(uint32_t index) {
  {
    std::lock_guard lock(extentsMutex_);
    if (extents_) extents_->Forget(index);
  }
  if (!indexCache_.ready()) return;
  auto item = std::lower_bound(indexedRecords_.begin(), indexedRecords_.end(), index);
  if (item != indexedRecords_.end() && *item == index)
    index_->Insert(static_cast<uint32_t>(item - indexedRecords_.begin()), WindowBox(index));
}

bool DxfDrawing::IsLayerLocked(TextView layer) const {
  auto found = doc_->FindLayer(layer);
  return found && (doc_->layers()[*found].flags & 4) != 0;
}

void DxfDrawing::SetLayerLocked(TextView layer, bool locked) {
  auto found = doc_->FindLayer(layer);
  if (!found) return;
  int flags = doc_->layers()[*found].flags;
  doc_->SetLayerFlags(*found, locked ? (flags | 4) : (flags & ~4));
  ForgetLayers();
}

std::optional<XDataLines> DxfDrawing::ReadXData(ObjectId id, TextView application) const {
  if (!Record(id) || !doc_->MayHaveXData(id.value - 1)) return std::nullopt;
  std::vector<Tag>& tags = ThreadScratch();
  doc_->XDataTagsInto(id.value - 1, tags);
  return ReadXDataLines(tags, application, doc_->codec());
}

EditResult DxfDrawing::WriteXData(ObjectId id, TextView application, const XDataLines& lines) {
  if (!Record(id)) return EditResult::NotFound;
  if (LayerOf(id.value - 1).locked) return EditResult::OnLockedLayer;
  uint32_t index = id.value - 1;
  TagList& tags = doc_->Edit(index);
  // The group lives only until it is copied into the entity's tags: on the stack, for a
  // marking writes one to each of hundreds of thousands of entities.
  std::array<std::byte, 2048> room;
  std::pmr::monotonic_buffer_resource memory(room.data(), room.size());
  TagList group = XDataGroup(application, lines, doc_->codec(), doc_->strings(), &memory, &tags);
  if (XDataSizeWithout(tags, application, doc_->codec()) + XDataSize(group) > kXDataLimit) return EditResult::TooLarge;
  ReplaceXDataGroup(tags, application, std::move(group), doc_->codec());
  // AutoCAD refuses a drawing whose extended data names an unregistered application.
  if (application != lastRegistered_) {
    if (!doc_->FindAppId(application)) doc_->AddAppId(application);
    lastRegistered_ = Text(application);
  }
  doc_->Commit(index);
  return EditResult::Ok;
}

EditResult DxfDrawing::RemoveXData(ObjectId id, TextView application) {
  if (!Record(id)) return EditResult::NotFound;
  if (!doc_->MayHaveXData(id.value - 1)) return EditResult::Ok;
  std::vector<Tag>& tags = ThreadScratch();
  doc_->XDataTagsInto(id.value - 1, tags);
  if (!HasXDataGroup(tags, application, doc_->codec())) return EditResult::Ok;
  if (LayerOf(id.value - 1).locked) return EditResult::OnLockedLayer;
  RemoveXDataGroup(doc_->Edit(id.value - 1), application, doc_->codec());
  doc_->Commit(id.value - 1);
  return EditResult::Ok;
}

std::unique_ptr<Drawing::WriteLock> DxfDrawing::LockForWrite() { return std::make_unique<DxfWriteLock>(); }

Text DxfDrawing::FileName() const { return FromFsPath(path_); }

}  // namespace tq::dxf
