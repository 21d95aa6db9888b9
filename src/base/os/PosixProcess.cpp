// The seam on POSIX: the process, its environment and the lock's owner.
#include <pwd.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "base/os/Os.hpp"

namespace tq::os {

std::optional<Text> Environment(TextView name) {
  const char* value = std::getenv(ToUtf8(name).c_str());
  if (!value) return std::nullopt;
  return FromUtf8(value);
}

Status SetEnvironment(TextView name, TextView value) {
  if (::setenv(ToUtf8(name).c_str(), ToUtf8(value).c_str(), 1) != 0)
    return MakeError(ErrorCode::InvalidValue, "cannot set the environment variable " + ToUtf8(name) + ": " + std::strerror(errno));
  return {};
}

uint64_t PeakMemoryKb() {
  rusage usage{};
  ::getrusage(RUSAGE_SELF, &usage);
  return static_cast<uint64_t>(usage.ru_maxrss);
}

Result<Path> ExecutableFolder() {
  std::error_code ec;
  Path self = std::filesystem::read_symlink("/proc/self/exe", ec);
  if (ec) return detail::FailureOf(ErrorCode::NotFound, "cannot find the program through", "/proc/self/exe", ec.message());
  return self.parent_path();
}

std::vector<std::string> Utf8Arguments(int argc, char** argv) { return std::vector<std::string>(argv, argv + argc); }

void UseBinaryStandardStreams() {}

void ReportFileSizeLimitAsError() { ::signal(SIGXFSZ, SIG_IGN); }

bool ProcessIsAlive(uint64_t process) {
  if (process == 0 || process > static_cast<uint64_t>(INT32_MAX)) return false;
  // Signal 0 only asks; EPERM means the process is there but belongs to someone else.
  return ::kill(static_cast<pid_t>(process), 0) == 0 || errno == EPERM;
}

void* AllocatePages(size_t bytes) {
  void* p = ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (p == MAP_FAILED) return nullptr;
#ifdef MADV_HUGEPAGE
  ::madvise(p, bytes, MADV_HUGEPAGE);  // a hint: without large pages the block works as well
#endif
  return p;
}

void FreePages(void* block, size_t bytes) { ::munmap(block, bytes); }

namespace detail {

Text UserName() {
  if (const passwd* pw = ::getpwuid(::geteuid()); pw && pw->pw_name) return FromUtf8(pw->pw_name);
  if (const char* user = std::getenv("USER")) return FromUtf8(user);
  return u"uid " + FromUtf8(std::to_string(::geteuid()));
}

Text HostName() {
  char name[256] = {};
  if (::gethostname(name, sizeof name - 1) != 0) return u"localhost";
  return FromUtf8(name);
}

uint64_t ProcessId() { return static_cast<uint64_t>(::getpid()); }

}  // namespace detail

}  // namespace tq::os
