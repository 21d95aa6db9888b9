#pragma once
// Runs a program and captures what it prints (standard output) and its exit status.
#ifndef _WIN32
#include <sys/wait.h>
#endif

#include <array>
#include <cstdio>
#include <string>

#include "base/Text.hpp"

namespace tq::test {

struct RunResult {
  int status = -1;
  std::string out;
};

#ifdef _WIN32
// The tests write their commands for a POSIX shell; cmd.exe quotes with double quotes only and
// wants the program's path with backslashes. The command goes to it as UTF-16, so that Japanese
// file names arrive whole whatever the ANSI code page is.
inline std::string ForCmd(std::string command) {
  for (char& c : command)
    if (c == '\'') c = '"';
  size_t end = command.find(' ');
  for (size_t i = 0; i < std::min(end, command.size()); ++i)
    if (command[i] == '/') command[i] = '\\';
  return "\"" + command + "\"";  // cmd /c takes away the outer pair
}

inline RunResult RunCommand(const std::string& command) {
  RunResult result;
  Text wide = FromUtf8(ForCmd(command));
  FILE* pipe = _wpopen(reinterpret_cast<const wchar_t*>(wide.c_str()), L"rb");
  if (!pipe) return result;
  std::array<char, 4096> buffer;
  size_t n;
  while ((n = fread(buffer.data(), 1, buffer.size(), pipe)) > 0) result.out.append(buffer.data(), n);
  result.status = _pclose(pipe);
  return result;
}
#else
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
#endif

inline RunResult RunTqstd(const std::string& arguments) {
  return RunCommand(std::string(TQSTD_PATH) + " " + arguments + " 2>&1");
}

inline RunResult RunEzdxfTool(const std::string& arguments) {
  return RunCommand(std::string(TQ_PYTHON) + " " + TQ_SOURCE_DIR + "/tests/interop/ezdxf_tool.py " + arguments);
}

}  // namespace tq::test
