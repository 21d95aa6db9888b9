// `tqstd dxf-info` beside `ezdxf audit` on the same damaged drawings: where both find the
// damage they agree on it (and on its line, where ezdxf gives one); where only dxf-info finds
// it, the reason ezdxf does not is written beside the case.
#include <gtest/gtest.h>

#include <map>
#include <regex>

#include "support/DamagedDrawings.hpp"
#include "support/RunCommand.hpp"
#include "support/TempDir.hpp"

using namespace tq::test;

namespace {

struct EzdxfVerdict {
  bool findsIt = false;
  std::string why;  // when it does not: why the two differ
};

// ezdxf 0.18's audit command, read through its recover loader.
const std::map<std::string, EzdxfVerdict>& Expected() {
  static const std::map<std::string, EzdxfVerdict> expected{
      {"duplicate-handle", {true, ""}},  // it removes the second entry from the block record
      {"handle-not-hex", {true, ""}},    // "skipped invalid handle", logged only
      {"open-brace", {true, ""}},        // "unbalanced list markers"
      {"stray-brace", {true, ""}},
      {"invalid-utf8", {true, ""}},      // "Fixed unicode decoding error"
      {"eof-first", {true, ""}},         // "is not a DXF file"
      {"xdata-over-limit", {false, "ezdxf does not count extended data against AutoCAD's per-object limit"}},
      {"unknown-acadver", {false, "ezdxf reads an unknown $ACADVER as the release it writes by default, without a word"}},
      {"unknown-codepage", {false, "ezdxf reads an unknown $DWGCODEPAGE as cp1252, and from AC1021 on ignores it"}},
  };
  return expected;
}

// An error or a fix of its audit, or a handle its loader logs as skipped: ezdxf then says "No
// errors found." all the same, for it drops the entity's handle and gives it a new one.
bool EzdxfFindsAProblem(const std::string& out) {
  return out.find("No errors found.") == std::string::npos || out.find("skipped invalid handle") != std::string::npos;
}

}  // namespace

TEST(DxfInfoAudit, AgreesWithEzdxfAuditWhereBothFindTheDamage) {
  TempDir dir;
  for (const DamagedDrawing& d : DamagedDrawings()) {
    SCOPED_TRACE(d.name);
    auto expected = Expected().find(d.name);
    ASSERT_NE(expected, Expected().end()) << "no ezdxf verdict written for " << d.name;
    std::string file = (dir / (d.name + ".dxf")).string();
    dir.Write(d.name + ".dxf", d.bytes);
    RunResult ours = RunTqstd("dxf-info " + file);
    RunResult theirs = RunCommand(std::string(TQ_PYTHON) + " -m ezdxf audit " + file + " 2>&1");
    EXPECT_EQ(ours.status, 3) << ours.out;
    EXPECT_NE(ours.out.find(d.Listed()), std::string::npos) << ours.out;
    EXPECT_EQ(EzdxfFindsAProblem(theirs.out), expected->second.findsIt) << expected->second.why << "\n" << theirs.out;
    // ezdxf gives the line of a pair's group code, dxf-info the line of the value at fault.
    std::smatch near;
    if (std::regex_search(theirs.out, near, std::regex("near line (\\d+)"))) {
      unsigned long line = std::stoul(near[1]);
      EXPECT_TRUE(line == d.line || line + 1 == d.line) << "ezdxf: line " << line << ", dxf-info: line " << d.line;
    }
  }
}

TEST(DxfInfoAudit, BothPassTheUndamagedDrawing) {
  std::string file = std::string(TQ_FIXTURES) + "/dxf/ezdxf_R2018.dxf";
  EXPECT_EQ(RunTqstd("dxf-info " + file).status, 0);
  RunResult theirs = RunCommand(std::string(TQ_PYTHON) + " -m ezdxf audit " + file + " 2>&1");
  EXPECT_FALSE(EzdxfFindsAProblem(theirs.out)) << theirs.out;
}
