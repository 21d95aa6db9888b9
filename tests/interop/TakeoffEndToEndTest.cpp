// tqstd takeoff on the example drawing written afresh by ezdxf.
#include <gtest/gtest.h>

#include "support/Listing.hpp"
#include "support/RunCommand.hpp"
#include "support/SiteCopy.hpp"

using namespace tq::test;

TEST(TakeoffEndToEnd, TqstdTakeoffOnADrawingWrittenByEzdxf) {
  SiteCopy copy;
  std::filesystem::path drawing = copy.dir / "ezdxf.dxf";
  RunResult w = RunCommand(std::string(TQ_PYTHON) + " " + TQ_SOURCE_DIR + "/examples/generate_example_drawing.py '" + drawing.string() + "'");
  ASSERT_EQ(w.status, 0) << w.out;
  auto r = RunTqstd("takeoff " + Quoted(drawing) + copy.Ini() + " --kind aggregate --separator comma -o " + Quoted(copy.dir / "a.txt"));
  ASSERT_EQ(r.status, 0) << r.out;
  EXPECT_EQ(copy.dir.Read("a.txt"), ReadFixture("takeoff/example_aggregate_comma.txt"));
}
