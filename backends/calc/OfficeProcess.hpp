#pragma once
// The office process behind the workbook engine: started in a session and process group of
// its own, and ended as a whole group, also when this program dies without cleaning up.
#include <string>
#include <sys/types.h>
#include <vector>

#include "base/Result.hpp"

namespace tq::calc {

class OfficeProcess {
 public:
  OfficeProcess() = default;
  ~OfficeProcess() { Kill(); }
  OfficeProcess(const OfficeProcess&) = delete;
  OfficeProcess& operator=(const OfficeProcess&) = delete;

  // Starts `program` with `arguments` (argv[0] included). Fails only when the process cannot
  // be created; a program that cannot be executed exits at once, which Exited() tells.
  // `leftovers` (the office's profile folder, its pipe) are removed once the group is gone,
  // by Kill or by the watchdog.
  Status Start(const std::string& program, const std::vector<std::string>& arguments,
               const std::vector<std::string>& leftovers);
  bool Running() const { return pid_ > 0; }
  // True once the started process has ended (it is reaped then).
  bool Exited();
  // Kills the whole process group and waits for the process and the watchdog.
  void Kill();

 private:
  pid_t pid_ = -1;       // the launcher; its pid is the group id of everything it starts
  pid_t watchdog_ = -1;  // kills the group when this process ends
  int watchFd_ = -1;     // the write end the watchdog waits on; held by this process only
  std::vector<std::string> leftovers_;
};

}  // namespace tq::calc
