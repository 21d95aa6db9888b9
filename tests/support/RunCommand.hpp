#pragma once
// Runs a program and captures what it prints (standard output) and its exit status.
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <string>

namespace tq::test {

struct RunResult {
  int status = -1;
  std::string out;
};

inline RunResult RunCommand(const std::string& command) {
  RunResult result;
  FILE* pipe = popen(command.c_str(), "r");
  if (!pipe) return result;
  std::array<char, 4096> buffer;
  size_t n;
  while ((n = fread(buffer.data(), 1, buffer.size(), pipe)) > 0) result.out.append(buffer.data(), n);
  int raw = pclose(pipe);
  result.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
  return result;
}

inline RunResult RunTqstd(const std::string& arguments) {
  return RunCommand(std::string(TQSTD_PATH) + " " + arguments + " 2>&1");
}

inline RunResult RunEzdxfTool(const std::string& arguments) {
  return RunCommand(std::string(TQ_PYTHON) + " " + TQ_SOURCE_DIR + "/tests/interop/ezdxf_tool.py " + arguments);
}

}  // namespace tq::test
