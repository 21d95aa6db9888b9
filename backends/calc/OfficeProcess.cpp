#include "calc/OfficeProcess.hpp"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <ctime>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tq::calc {
namespace {

void CloseFrom(int first) {
#ifdef SYS_close_range
  if (syscall(SYS_close_range, first, ~0U, 0) == 0) return;
#endif
  for (int fd = first; fd < 1024; ++fd) close(fd);
}

// A watchdog rather than a parent-death signal: the office's launcher starts further
// processes (oosplash, soffice.bin) that a signal on the launcher alone would not reach, and
// that signal follows the thread that forked, not the program. The watchdog, forked apart
// from the office and in a session of its own (a signal to this program's group does not
// reach it), blocks on a pipe only this program writes to: when this program ends in any
// way, even by SIGKILL, the pipe reads end-of-file and the watchdog kills the office's group.
[[noreturn]] void Watch(int readFd, pid_t group, char* const* remove) {
  setsid();
  dup2(readFd, 0);
  CloseFrom(1);
  char byte;
  for (;;) {
    ssize_t n = read(0, &byte, 1);
    if (n == 0 || (n < 0 && errno != EINTR)) break;
  }
  kill(-group, SIGKILL);
  // Give the killed processes a moment to go before their files are removed.
  for (int i = 0; i < 50 && kill(-group, 0) == 0; ++i) {
    timespec pause{0, 20'000'000};
    nanosleep(&pause, nullptr);
  }
  execv("/bin/rm", remove);
  _exit(0);
}

// Whether any process of the group is alive (zombies waiting to be reaped do not count).
bool GroupAlive(pid_t group) {
  DIR* proc = opendir("/proc");
  if (!proc) return kill(-group, 0) == 0;
  bool alive = false;
  while (dirent* entry = readdir(proc)) {
    if (entry->d_name[0] < '1' || entry->d_name[0] > '9') continue;
    char path[300];
    std::snprintf(path, sizeof path, "/proc/%s/stat", entry->d_name);
    FILE* file = std::fopen(path, "r");
    if (!file) continue;
    char state = 0;
    int pgrp = 0;
    // pid (comm) state ppid pgrp: the command may hold blanks, so read past its last ')'.
    char line[512];
    if (std::fgets(line, sizeof line, file)) {
      if (char* close = std::strrchr(line, ')')) std::sscanf(close + 1, " %c %*d %d", &state, &pgrp);
    }
    std::fclose(file);
    if (pgrp == group && state != 'Z') {
      alive = true;
      break;
    }
  }
  closedir(proc);
  return alive;
}

}  // namespace

Status OfficeProcess::Start(const std::string& program, const std::vector<std::string>& arguments,
                            const std::vector<std::string>& leftovers) {
  Kill();
  leftovers_ = leftovers;
  // Everything the children need is made before forking: after it, only async-signal-safe calls.
  std::vector<char*> argv;
  for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
  argv.push_back(nullptr);
  std::vector<std::string> rmArguments{"rm", "-rf", "--"};
  rmArguments.insert(rmArguments.end(), leftovers_.begin(), leftovers_.end());
  std::vector<char*> rm;
  for (const std::string& argument : rmArguments) rm.push_back(const_cast<char*>(argument.c_str()));
  rm.push_back(nullptr);
  int devNull = open("/dev/null", O_RDWR | O_CLOEXEC);
  int watch[2];
  if (devNull < 0 || pipe2(watch, O_CLOEXEC) != 0) {
    if (devNull >= 0) close(devNull);
    return MakeError(ErrorCode::CannotRead, "cannot prepare the office process");
  }
  pid_t pid = fork();
  if (pid == 0) {
    setsid();
    dup2(devNull, 0);
    dup2(devNull, 1);
    dup2(devNull, 2);
    execv(program.c_str(), argv.data());
    _exit(127);
  }
  close(devNull);
  if (pid < 0) {
    close(watch[0]);
    close(watch[1]);
    return MakeError(ErrorCode::CannotRead, "cannot start the office process");
  }
  pid_ = pid;
  pid_t watchdog = fork();
  if (watchdog == 0) Watch(watch[0], pid, rm.data());
  close(watch[0]);
  watchFd_ = watch[1];
  watchdog_ = watchdog;
  return {};
}

bool OfficeProcess::Exited() {
  if (pid_ <= 0) return true;
  int status = 0;
  pid_t done = waitpid(pid_, &status, WNOHANG);
  return done == pid_ || (done < 0 && errno == ECHILD);
}

void OfficeProcess::Kill() {
  if (pid_ > 0) {
    kill(-pid_, SIGKILL);
    kill(pid_, SIGKILL);
    while (waitpid(pid_, nullptr, 0) < 0 && errno == EINTR) {
    }
    // The launcher's children are reaped by init; wait until the group is gone.
    for (int i = 0; i < 200 && GroupAlive(pid_); ++i) usleep(10000);
    pid_ = -1;
  }
  if (watchFd_ >= 0) {
    close(watchFd_);  // the watchdog reads end-of-file, kills the (gone) group and ends
    watchFd_ = -1;
  }
  if (watchdog_ > 0) {
    while (waitpid(watchdog_, nullptr, 0) < 0 && errno == EINTR) {
    }
    watchdog_ = -1;
  }
  for (const std::string& path : leftovers_) {
    std::error_code error;
    std::filesystem::remove_all(path, error);
  }
  leftovers_.clear();
}

}  // namespace tq::calc
