#pragma once
// Runs the tqstd program and captures what it prints and its exit status.
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <string>

namespace tq::test {

struct RunResult {
  int status = -1;
  std::string out;
};

inline RunResult RunTqstd(const std::string& arguments) {
  RunResult result;
  std::string command = std::string(TQSTD_PATH) + " " + arguments + " 2>&1";
  FILE* pipe = popen(command.c_str(), "r");
  if (!pipe) return result;
  std::array<char, 4096> buffer;
  size_t n;
  while ((n = fread(buffer.data(), 1, buffer.size(), pipe)) > 0) result.out.append(buffer.data(), n);
  int raw = pclose(pipe);
  result.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
  return result;
}

}  // namespace tq::test
