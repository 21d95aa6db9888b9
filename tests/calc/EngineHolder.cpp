// Starts the workbook engine, opens a workbook, tells its process id and its office's profile
// folder on stdout and waits to be killed: the test kills it with SIGKILL and looks for an
// office left behind.
#include <cstdio>
#include <unistd.h>

#include "calc/CalcEngine.hpp"
#include "calc/CalcWorkbook.hpp"

int main(int argc, char** argv) {
  tq::calc::CalcEngine engine;
  tq::calc::CalcWorkbook workbook(engine);
  if (!workbook.Init()) return 2;
  if (argc > 1 && !workbook.Open(tq::FromUtf8(argv[1]))) return 3;
  std::printf("%d %s\n", int(getpid()), engine.ProfileFolder().c_str());
  std::fflush(stdout);
  for (;;) pause();
}
