#pragma once
// The processes whose command line names a text (an office's profile folder), found in /proc
// (a pgrep -f run through a shell would find the shell itself).
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace tq::test {

inline std::vector<int> ProcessesNaming(const std::string& text) {
  std::vector<int> found;
  for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
    std::string name = entry.path().filename().string();
    if (name.find_first_not_of("0123456789") != std::string::npos) continue;
    int pid = std::stoi(name);
    if (pid == getpid()) continue;
    std::ifstream cmdline(entry.path() / "cmdline", std::ios::binary);
    std::string line((std::istreambuf_iterator<char>(cmdline)), std::istreambuf_iterator<char>());
    std::ifstream stat(entry.path() / "stat");
    std::string statLine;
    std::getline(stat, statLine);
    size_t close = statLine.rfind(')');
    bool zombie = close != std::string::npos && close + 2 < statLine.size() && statLine[close + 2] == 'Z';
    if (!zombie && !line.empty() && line.find(text) != std::string::npos) found.push_back(pid);
  }
  return found;
}

}  // namespace tq::test
