#include <gtest/gtest.h>

#include "base/Encoding.hpp"
#include "dxf/DxfDrawing.hpp"
#include "support/DxfText.hpp"
#include "support/Listing.hpp"
#include "support/TempDir.hpp"

using namespace tq;
using namespace tq::test;

namespace {

std::unique_ptr<dxf::DxfDrawing> FromText(const std::string& text) {
  return std::make_unique<dxf::DxfDrawing>(dxf::Document::Read(text).value(), "memory.dxf");
}

// The output differs from the input only inside [begin, end) of the input.
void ExpectChangedOnlyWithin(const std::string& before, const std::string& after, uint32_t begin, uint32_t end) {
  ASSERT_GE(after.size() + (end - begin), before.size() - 0);
  EXPECT_EQ(after.substr(0, begin), before.substr(0, begin));
  size_t tail = before.size() - end;
  EXPECT_EQ(after.substr(after.size() - tail), before.substr(end));
  EXPECT_NE(after, before);
}

}  // namespace

TEST(DxfEdit, OneChangedColourChangesOnlyThatEntitysBytes) {
  std::string original = ReadFixture("dxf/ezdxf_R2018.dxf");
  auto drawing = FromText(original);
  ObjectId line = drawing->FindHandle(u"3C");
  ASSERT_EQ(drawing->SetColourIndex(line, 1), EditResult::Ok);
  const dxf::EntityRecord& rec = drawing->document().records()[line.value - 1];
  ExpectChangedOnlyWithin(original, drawing->document().Serialize(), rec.begin, rec.end);
  auto reopened = FromText(drawing->document().Serialize());
  EXPECT_EQ(reopened->ColourIndex(reopened->FindHandle(u"3C")), 1);
}

TEST(DxfEdit, OneChangedRecordChangesOnlyThatEntitysBytes) {
  std::string original = ReadFixture("dxf/ezdxf_R2004.dxf");
  auto drawing = FromText(original);
  ObjectId text = drawing->FindHandle(u"42");
  ASSERT_EQ(drawing->WriteXData(text, u"TQ_STDINF01", {u"一", u"二", u"AC-2,送風機"}), EditResult::Ok);
  const dxf::EntityRecord& rec = drawing->document().records()[text.value - 1];
  ExpectChangedOnlyWithin(original, drawing->document().Serialize(), rec.begin, rec.end);
  auto reopened = FromText(drawing->document().Serialize());
  EXPECT_EQ(*reopened->ReadXData(reopened->FindHandle(u"42"), u"TQ_STDINF01"), (XDataLines{u"一", u"二", u"AC-2,送風機"}));
  EXPECT_EQ(*reopened->ReadXData(reopened->FindHandle(u"42"), u"TQ_STDINF02"),
            *drawing->ReadXData(text, u"TQ_STDINF02"));
}

namespace {
// Marks every selectable entity (colour 1, old colour saved) and restores them again.
void MarkAndRestoreAll(dxf::DxfDrawing& drawing, std::vector<int>* coloursBefore = nullptr) {
  std::vector<ObjectId> ids = drawing.SelectAll({});
  std::vector<int> before;
  for (ObjectId id : ids) {
    before.push_back(drawing.ColourIndex(id));
    if (drawing.SetColourIndex(id, 1) == EditResult::Ok)
      drawing.WriteXData(id, u"TQ_STDCHECK", {FromUtf8(std::to_string(before.back()))});
  }
  for (size_t i = 0; i < ids.size(); ++i) {
    if (!drawing.ReadXData(ids[i], u"TQ_STDCHECK")) continue;
    drawing.SetColourIndex(ids[i], before[i]);
    drawing.RemoveXData(ids[i], u"TQ_STDCHECK");
  }
  if (coloursBefore) *coloursBefore = before;
}

// The drawing with "TQ_STDCHECK" registered, as after its first marking.
std::string Registered(const std::string& original) {
  auto drawing = std::make_unique<dxf::DxfDrawing>(dxf::Document::Read(original).value(), "memory.dxf");
  ObjectId first = drawing->SelectAll({}).front();
  drawing->WriteXData(first, u"TQ_STDCHECK", {u"256"});
  drawing->RemoveXData(first, u"TQ_STDCHECK");
  return drawing->document().Serialize();
}
}  // namespace

TEST(DxfEdit, MarkThenRestoreIsByteIdenticalForByLayerByBlockAndExplicitColours) {
  for (std::string version : {"R12", "R2000", "R2004", "R2018"}) {
    std::string registered = Registered(ReadFixture("dxf/ezdxf_" + version + ".dxf"));
    auto drawing = FromText(registered);
    std::vector<int> before;
    MarkAndRestoreAll(*drawing, &before);
    for (int colour : {0, 3, 256}) EXPECT_NE(std::find(before.begin(), before.end(), colour), before.end()) << version;
    EXPECT_EQ(drawing->document().Serialize(), registered) << version;
  }
}

TEST(DxfEdit, MarkThenRestoreLeavesTheFileByteIdenticalWhenTheApplicationIsRegistered) {
  std::string original = R12Drawing(LineTags("A1", 0, 0, 10, 10) + LineTags("A2", 0, 0, 5, 5) +
                                    Tags{{0, "CIRCLE"}, {5, "A3"}, {8, "0"}, {62, "0"}, {10, "1"}, {20, "1"}, {30, "0"}, {40, "1"}} +
                                    Tags{{0, "POINT"}, {5, "A4"}, {8, "4"}, {62, "     3"}, {10, "1"}, {20, "1"}, {30, "0"}});
  // Register the marking application first, as the first marking of a drawing does.
  auto first = FromText(original);
  first->WriteXData(first->FindHandle(u"A1"), u"TQ_STDCHECK", {u"256"});
  first->RemoveXData(first->FindHandle(u"A1"), u"TQ_STDCHECK");
  std::string registered = first->document().Serialize();
  auto drawing = FromText(registered);
  std::vector<int> before;
  for (ObjectId id : drawing->SelectAll({})) {
    before.push_back(drawing->ColourIndex(id));
    drawing->SetColourIndex(id, 1);
    drawing->WriteXData(id, u"TQ_STDCHECK", {FromUtf8(std::to_string(before.back()))});
  }
  std::vector<ObjectId> ids = drawing->SelectAll({});
  for (size_t i = 0; i < ids.size(); ++i) {
    drawing->SetColourIndex(ids[i], before[i]);
    drawing->RemoveXData(ids[i], u"TQ_STDCHECK");
  }
  EXPECT_EQ(drawing->document().Serialize(), registered);
  EXPECT_EQ((std::vector<int>{256, 256, 0, 3}), before);
}

TEST(DxfEdit, NewApplicationIsRegistered) {
  auto drawing = FromText(ReadFixture("dxf/ezdxf_R2010.dxf"));
  ASSERT_FALSE(drawing->document().FindAppId(u"TQ_STDINF03"));
  drawing->WriteXData(drawing->FindHandle(u"42"), u"TQ_STDINF03", {u"a"});
  auto reopened = dxf::Document::Read(drawing->document().Serialize()).value();
  ASSERT_TRUE(reopened->FindAppId(u"TQ_STDINF03"));
}

TEST(DxfEdit, NewEntityGetsAFreshHandleFromHandSeedWhichIsAdvanced) {
  std::string original = R12Drawing(LineTags("A1", 0, 0, 10, 10));
  auto drawing = FromText(original);
  ObjectId added = drawing->AddLine({{1, 2, 0}, {3, 4, 0}, u"0", 256, u"", kLineweightByLayer});
  EXPECT_EQ(drawing->Handle(added), u"1000");
  ObjectId text = drawing->AddText({u"新規", {5, 6, 0}, 350, 1, 0, u"5", 256});
  EXPECT_EQ(drawing->Handle(text), u"1001");
  std::string saved = drawing->document().Serialize();
  EXPECT_NE(saved.find("$HANDSEED\n  5\n1002\n"), std::string::npos);
  auto reopened = FromText(saved);
  ObjectId line = reopened->FindHandle(u"1000");
  ASSERT_FALSE(line.isNull());
  EXPECT_EQ(reopened->LineData(line)->end, (Point3{3, 4, 0}));
  EXPECT_EQ(reopened->TextData(reopened->FindHandle(u"1001"))->string, u"新規");
}

TEST(DxfEdit, NewEntityOnAMissingLayerAddsTheLayer) {
  auto drawing = FromText(R12Drawing({}));
  drawing->AddLine({{0, 0, 0}, {1, 1, 0}, u"新しい層", 256, u"", kLineweightByLayer});
  auto reopened = dxf::Document::Read(drawing->document().Serialize()).value();
  EXPECT_TRUE(reopened->FindLayer(u"新しい層"));
}

TEST(DxfEdit, ErasedEntityAndItsVerticesAreGone) {
  auto drawing = FromText(ReadFixture("dxf/ezdxf_R2000.dxf"));
  std::vector<ObjectId> polylines = drawing->SelectAll({u"POLYLINE", u""});
  ASSERT_EQ(polylines.size(), 1u);
  Text handle = drawing->Handle(polylines[0]);
  ASSERT_EQ(drawing->Erase(polylines[0]), EditResult::Ok);
  std::string saved = drawing->document().Serialize();
  auto reopened = FromText(saved);
  EXPECT_TRUE(reopened->FindHandle(handle).isNull());
  EXPECT_TRUE(reopened->SelectAll({u"POLYLINE", u""}).empty());
  EXPECT_EQ(saved.find("VERTEX"), std::string::npos);
}

TEST(DxfEdit, EntityOnALockedLayerIsNotChangedUntilTheLayerIsUnlocked) {
  std::string original = R12Drawing(LineTags("A1", 0, 0, 1, 1, "LOCKED"));
  auto drawing = FromText(original);
  ObjectId line = drawing->FindHandle(u"A1");
  EXPECT_TRUE(drawing->IsLayerLocked(u"LOCKED"));
  EXPECT_EQ(drawing->SetColourIndex(line, 1), EditResult::OnLockedLayer);
  EXPECT_EQ(drawing->WriteXData(line, u"X", {u"1"}), EditResult::OnLockedLayer);
  EXPECT_EQ(drawing->document().Serialize(), original);
  drawing->SetLayerLocked(u"locked", false);
  EXPECT_EQ(drawing->Erase(line), EditResult::Ok);
  drawing->SetLayerLocked(u"LOCKED", true);
  auto reopened = FromText(drawing->document().Serialize());
  EXPECT_TRUE(reopened->IsLayerLocked(u"LOCKED"));
  EXPECT_TRUE(reopened->FindHandle(u"A1").isNull());
}

TEST(DxfEdit, SaveIsAtomicAndKeepsTheOldFileAsBackup) {
  TempDir dir;
  std::string original = R12Drawing(LineTags("A1", 0, 0, 1, 1));
  dir.Write("plan.dxf", original);
  auto drawing = dxf::DxfDrawing::Open(dir / "plan.dxf").value();
  drawing->SetColourIndex(drawing->FindHandle(u"A1"), 5);
  ASSERT_TRUE(drawing->Save());
  EXPECT_EQ(dir.Read("plan.dxf.bak"), original);
  EXPECT_NE(dir.Read("plan.dxf"), original);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.path()), {}), 2);
}

TEST(DxfEdit, FailedSaveLeavesTheOriginalUntouched) {
  TempDir dir;
  std::string original = R12Drawing(LineTags("A1", 0, 0, 1, 1));
  dir.Write("plan.dxf", original);
  auto drawing = dxf::DxfDrawing::Open(dir / "plan.dxf").value();
  drawing->SetColourIndex(drawing->FindHandle(u"A1"), 5);
  Status saved = drawing->Save(dir / "no-such-folder" / "plan.dxf");
  ASSERT_FALSE(saved);
  EXPECT_NE(saved.error().Describe().find("no-such-folder"), std::string::npos) << saved.error().Describe();
  EXPECT_EQ(dir.Read("plan.dxf"), original);
}

TEST(DxfEdit, CrLfFilesGetCrLfInTheirChangedRecords) {
  std::string original = R12Drawing(LineTags("A1", 0, 0, 1, 1), "ANSI_932", "\r\n");
  auto drawing = FromText(original);
  drawing->WriteXData(drawing->FindHandle(u"A1"), u"TQ_STDINF01", {u"x"});
  std::string saved = drawing->document().Serialize();
  EXPECT_NE(saved.find("1001\r\nTQ_STDINF01\r\n1000\r\nx\r\n"), std::string::npos);
  size_t bare = 0;
  for (size_t i = 0; i < saved.size(); ++i)
    if (saved[i] == '\n' && (i == 0 || saved[i - 1] != '\r')) ++bare;
  EXPECT_EQ(bare, 0u);
}
