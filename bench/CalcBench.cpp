// The workbook engine on LibreOffice; bench/run_calc.sh runs it.
//   calc_bench generate FILE.fods   a size workbook whose parts block has 20 parts rows
//   calc_bench run EXAMPLE.xls REGISTRATION.xls
//       import of the example workbook with the engine's start (cold), then again (warm, best
//       of 5); the workbook part of a registration of 6 size rows on the 20-row workbook
//       (warm, best of 3); then the shutdown, and whether any office process is left.
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <unistd.h>
#include <utility>

#include "base/Paths.hpp"
#include "calc/CalcEngine.hpp"
#include "calc/CalcWorkbook.hpp"
#include "size/SizeImport.hpp"
#include "size/SizeRegistration.hpp"

using Clock = std::chrono::steady_clock;

namespace {

double Since(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }

std::string Cell(const std::string& content) {
  if (content.empty()) return "<table:table-cell/>";
  if (content[0] == '=') return "<table:table-cell table:formula=\"of:" + content + "\"/>";
  return "<table:table-cell office:value-type=\"string\"><text:p>" + content + "</text:p></table:table-cell>";
}

std::string Number(int value) {
  return "<table:table-cell office:value-type=\"float\" office:value=\"" + std::to_string(value) + "\"/>";
}

// Rows 1 and 2 the headers, 3 to 22 the parts rows (quantity = AZn × 1.5 + size ①), the size
// headers on row 30 with right borders, the data cells on row 32.
std::string Workbook() {
  std::string rows;
  auto row = [&](const std::string& cells) { rows += "<table:table-row>" + cells + "</table:table-row>\n"; };
  std::string header, numbers;
  const char* names[] = {"番号", "名称", "工事項目", "A材/別途", "図記号", "部材", "寸法1", "", "寸法2", "", "寸法3", "", "材質",
                         "仕様", "数量", "呼称", "属性", "備考", "CI-NET", "用途", "施工", "夜間", "支給", "内張", "B材キー"};
  for (int i = 0; i < 25; ++i) {
    header += Cell(names[i]);
    numbers += Cell(std::to_string(i + 1));
  }
  row(header);
  row(numbers);
  for (int r = 3; r <= 22; ++r) {
    std::string n = std::to_string(r);
    std::string cells = Cell(r == 3 ? "=[.A32]" : r == 4 ? "=[.E32]" : "") + Cell(r == 3 ? "ファンコイルユニット" : "") +
                        Cell("冷温水") + Cell("A") + Cell("") + Cell("部材" + n) + Cell("=[.B32]") + Cell("A") +
                        Cell("=[.C32]") + Cell("") + Cell("=[.D32]") + Cell("") + Cell("SUS304") + Cell("JIS G 3448") +
                        Cell("=[.AZ" + n + "]*1.5+[.B32]") + Cell("m") +
                        "<table:table-cell table:number-columns-repeated=\"35\"/>" + Number(r % 4 + 1);
    row(cells);
  }
  rows += "<table:table-row table:number-rows-repeated=\"7\"><table:table-cell/></table:table-row>\n";
  std::string bordered = "<table:table-cell table:style-name=\"b\" office:value-type=\"string\"><text:p>";
  row(bordered + "記号</text:p></table:table-cell>" + bordered + "①</text:p></table:table-cell>" + bordered +
      "②</text:p></table:table-cell>" + bordered + "③</text:p></table:table-cell>" + Cell("台数"));
  row(Cell(""));
  row(Cell("FCU-1") + Number(20) + Number(20) + Number(15) + Number(1));
  return R"(<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
 xmlns:style="urn:oasis:names:tc:opendocument:xmlns:style:1.0" xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0"
 xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0" xmlns:fo="urn:oasis:names:tc:opendocument:xmlns:xsl-fo-compatible:1.0"
 xmlns:of="urn:oasis:names:tc:opendocument:xmlns:of:1.2" office:version="1.2" office:mimetype="application/vnd.oasis.opendocument.spreadsheet">
<office:automatic-styles><style:style style:name="b" style:family="table-cell"><style:table-cell-properties fo:border-right="0.74pt solid #000000"/></style:style></office:automatic-styles>
<office:body><office:spreadsheet><table:table table:name="サイズ表">
)" + rows + "</table:table></office:spreadsheet></office:body></office:document>\n";
}

// The processor time (user + system, seconds) of the processes whose command line names the
// text, and how many there are; zombies left out.
std::pair<double, int> OfficeProcesses(const std::string& text) {
  double seconds = 0;
  int count = 0;
  long ticks = sysconf(_SC_CLK_TCK);
  for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
    std::ifstream cmdline(entry.path() / "cmdline", std::ios::binary);
    std::string line((std::istreambuf_iterator<char>(cmdline)), std::istreambuf_iterator<char>());
    if (line.empty() || line.find(text) == std::string::npos) continue;
    std::ifstream stat(entry.path() / "stat");
    std::string state;
    std::getline(stat, state);
    size_t close = state.rfind(')');
    if (close == std::string::npos || state.compare(close, 4, ") Z ") == 0) continue;
    std::istringstream fields(state.substr(close + 2));
    std::string field;
    double user = 0, system = 0;
    for (int i = 3; i <= 15 && fields >> field; ++i) {
      if (i == 14) user = std::stod(field);
      if (i == 15) system = std::stod(field);
    }
    seconds += (user + system) / double(ticks);
    ++count;
  }
  return {seconds, count};
}

double LoadAverage() {
  double load = 0;
  std::ifstream("/proc/loadavg") >> load;
  return load;
}

tq::Result<tq::SizeImportResult> Import(tq::Workbook& workbook, const tq::Text& path) {
  tq::NoProgress progress;
  return tq::ImportSizeWorkbook(workbook, path, {}, progress);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 3 && std::string(argv[1]) == "generate") {
    std::ofstream(argv[2], std::ios::binary) << Workbook();
    return 0;
  }
  if (argc != 4 || std::string(argv[1]) != "run") return 2;
  tq::Text example = tq::FromUtf8(argv[2]), registrationBook = tq::FromUtf8(argv[3]);

  tq::calc::CalcEngine engine;
  tq::calc::CalcWorkbook workbook(engine);
  Clock::time_point start = Clock::now();
  if (!Import(workbook, example)) return 1;
  std::printf("import, cold (engine start included): %.3f s (load average %.1f on %ld processors; the office "
              "used %.2f s of processor time to get there)\n",
              Since(start), LoadAverage(), sysconf(_SC_NPROCESSORS_ONLN), OfficeProcesses(engine.ProfileFolder()).first);

  double best = 1e9;
  for (int i = 0; i < 5; ++i) {
    start = Clock::now();
    if (!Import(workbook, example)) return 1;
    best = std::min(best, Since(start));
  }
  std::printf("import, warm: %.3f s (best of 5)\n", best);

  auto import = Import(workbook, registrationBook);
  if (!import) return 1;
  std::vector<tq::SizeRowValues> rows;
  for (int i = 1; i <= 6; ++i)
    rows.push_back({u"FCU", tq::FromUtf8(std::to_string(i)), {u"20", u"25", u"15"}, tq::FromUtf8(std::to_string(i))});
  best = 1e9;
  size_t lines = 0;
  for (int i = 0; i < 3; ++i) {
    lines = 0;
    tq::NoProgress progress;
    start = Clock::now();
    tq::Status status = tq::RegisterSizeRows(workbook, registrationBook, *import, {}, rows, progress,
                                             [&](int, std::vector<tq::Text> record) -> tq::Status {
                                               lines += record.size();
                                               return {};
                                             });
    if (!status) {
      std::fprintf(stderr, "%s\n", status.error().Describe().c_str());
      return 1;
    }
    best = std::min(best, Since(start));
  }
  std::printf("registration of 6 rows x %zu parts rows, warm: %.3f s (best of 3)\n", lines / 6 - 2, best);

  std::string profile = engine.ProfileFolder();
  start = Clock::now();
  engine.Shutdown();
  std::printf("shutdown: %.3f s\n", Since(start));
  int left = OfficeProcesses(profile).second;
  std::printf("office processes left: %d\n", left);
  return left == 0 ? 0 : 1;
}
