// Records written through the Drawing port are read by ezdxf, line for line; records that
// ezdxf wrote are read by ReadInfoRecords.
#include <gtest/gtest.h>

#include "dxf/DxfDrawing.hpp"
#include "info/StdInfRecord.hpp"
#include "support/Listing.hpp"
#include "support/RunCommand.hpp"
#include "support/TempDir.hpp"

using namespace tq;
using namespace tq::test;

TEST(InfoRecordInterop, RecordsWeWriteAreReadByEzdxfLineForLine) {
  for (std::string version : {"R12", "R2004", "R2018"}) {
    TempDir dir;
    std::filesystem::path path = dir / "d.dxf";
    ASSERT_EQ(RunEzdxfTool("write " + version + " " + path.string()).status, 0);
    auto drawing = dxf::DxfDrawing::Open(path).value();
    ObjectId sheet = drawing->SelectAll({u"TEXT", u"5"}).front();
    StdInfRecords records(3);
    for (size_t r = 0; r < records.size(); ++r) {
      records[r].resize(4);
      for (size_t l = 0; l < 4; ++l)
        for (int m = 1; m <= 25; ++m)
          records[r][l].member(MemberAt(static_cast<size_t>(m) - 1)) = m == 6 ? Text(u"スパイラルダクト") : FromUtf8(std::to_string(r * 100 + l * 10 + static_cast<size_t>(m)));
    }
    records[2][3].member(RowMember::kSpecification) = Text(150, u'仕');  // a line longer than one string may hold
    ASSERT_TRUE(WriteInfoRecords(*drawing, sheet, records, CountInfoRecords(*drawing, sheet)));
    ASSERT_TRUE(drawing->Save());
    RunResult r = RunEzdxfTool("read " + path.string());
    ASSERT_EQ(r.status, 0) << r.out;
    Listing listing = ParseListing(r.out);
    std::string handle = ToUtf8(drawing->Handle(sheet));
    for (size_t n = 0; n < records.size(); ++n) {
      std::vector<std::string> expected;
      for (const CStdInfRow& row : records[n]) expected.push_back(ToUtf8(FormatInfoLine(row)));
      EXPECT_EQ((listing.xdata[{handle, ToUtf8(InfoRecordName(static_cast<int>(n) + 1))}]), expected) << version << " " << n;
    }
    EXPECT_EQ(listing.auditErrors, 0) << version;
  }
}

TEST(InfoRecordInterop, RecordsEzdxfWroteAreRead) {
  TempDir dir;
  std::filesystem::path path = dir / "d.dxf";
  ASSERT_EQ(RunEzdxfTool("write R2010 " + path.string()).status, 0);
  auto drawing = dxf::DxfDrawing::Open(path).value();
  ObjectId sheet = drawing->SelectAll({u"TEXT", u"5"}).front();
  StdInfRecords records = ReadInfoRecords(*drawing, sheet, std::vector<Text>{});
  ASSERT_EQ(records.size(), 2u);
  EXPECT_EQ(records[0][2].member(RowMember::kSymbolOrUnits), u"AC-1");
  EXPECT_EQ(records[0][2].member(RowMember::kMemberName), u"スパイラルダクト");
  EXPECT_EQ(records[0][2].member(RowMember::kUseCode), u"共通");  // position 20
  EXPECT_EQ(records[0][2].member(RowMember::kAttributeValue), u"");      // position 21, empty, after the fill rule
  EXPECT_EQ(records[0][3].member(RowMember::kSymbolOrUnits), u"");
  ASSERT_EQ(records[1].size(), 2u);
  // The braced long line, joined: twelve comma-separated copies, so twelve members.
  EXPECT_EQ(records[1][1].member(RowMember::kSymbolOrUnits), u"SUS304 一般配管用ステンレス鋼鋼管 20A");
  EXPECT_EQ(records[1][1].member(RowMember::kAfterDimension3), u"SUS304 一般配管用ステンレス鋼鋼管 20A");
  EXPECT_EQ(records[1][1].member(RowMember::kMaterial), u"");
}
