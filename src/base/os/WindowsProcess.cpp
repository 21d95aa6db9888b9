// The seam on Windows: the process, its environment, the lock's owner and error messages.
#include <windows.h>
#include <psapi.h>
#include <shellapi.h>

#include <fcntl.h>
#include <io.h>

#include <cstdio>

#include "base/os/Os.hpp"
#include "base/os/WindowsError.hpp"

namespace tq::os {

namespace {
std::wstring Wide(TextView text) { return std::wstring(text.begin(), text.end()); }
Text FromWide(const wchar_t* text, size_t size) { return Text(text, text + size); }
}  // namespace

namespace detail {

std::string SystemMessage(unsigned long error) {
  wchar_t* buffer = nullptr;
  DWORD n = ::FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                             nullptr, error, 0, reinterpret_cast<wchar_t*>(&buffer), 0, nullptr);
  Text text = n ? FromWide(buffer, n) : Text();
  if (buffer) ::LocalFree(buffer);
  while (!text.empty() && (text.back() == u'\n' || text.back() == u'\r' || text.back() == u' ' || text.back() == u'.'))
    text.pop_back();
  return text.empty() ? "error " + std::to_string(error) : ToUtf8(text);
}

Error Failure(ErrorCode code, std::string_view doing, const Path& path) {
  return FailureOf(code, doing, path, SystemMessage(::GetLastError()));
}

ErrorCode ReadCode() {
  DWORD error = ::GetLastError();
  return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND ? ErrorCode::NotFound : ErrorCode::CannotRead;
}

Text UserName() {
  wchar_t name[256];
  DWORD size = 256;
  return ::GetUserNameW(name, &size) && size > 0 ? FromWide(name, size - 1) : Text(u"unknown");
}

Text HostName() {
  wchar_t name[MAX_COMPUTERNAME_LENGTH + 1];
  DWORD size = MAX_COMPUTERNAME_LENGTH + 1;
  return ::GetComputerNameW(name, &size) ? FromWide(name, size) : Text(u"localhost");
}

uint64_t ProcessId() { return ::GetCurrentProcessId(); }

}  // namespace detail

void* AllocatePages(size_t bytes) { return ::VirtualAlloc(nullptr, bytes, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE); }

void FreePages(void* block, size_t) { ::VirtualFree(block, 0, MEM_RELEASE); }

bool ProcessIsAlive(uint64_t process) {
  if (process == 0 || process > 0xFFFFFFFFu) return false;
  HANDLE h = ::OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, static_cast<DWORD>(process));
  if (!h) return ::GetLastError() == ERROR_ACCESS_DENIED;  // there, but not ours to look at
  DWORD code = 0;
  bool running = ::GetExitCodeProcess(h, &code) && code == STILL_ACTIVE;
  ::CloseHandle(h);
  return running;
}

std::optional<Text> Environment(TextView name) {
  std::wstring key = Wide(name);
  DWORD size = ::GetEnvironmentVariableW(key.c_str(), nullptr, 0);
  if (size == 0) return std::nullopt;
  std::wstring value(size, L'\0');
  size = ::GetEnvironmentVariableW(key.c_str(), value.data(), size);
  return FromWide(value.data(), size);
}

Status SetEnvironment(TextView name, TextView value) {
  // Both the process block and the C runtime's copy, so that getenv in a library agrees.
  std::wstring key = Wide(name), text = Wide(value);
  if (!::SetEnvironmentVariableW(key.c_str(), text.c_str()) || ::_wputenv_s(key.c_str(), text.c_str()) != 0)
    return MakeError(ErrorCode::InvalidValue, "cannot set the environment variable " + ToUtf8(name) + ": " +
                                                  detail::SystemMessage(::GetLastError()));
  return {};
}

uint64_t PeakMemoryKb() {
  PROCESS_MEMORY_COUNTERS counters{};
  if (!::K32GetProcessMemoryInfo(::GetCurrentProcess(), &counters, sizeof counters)) return 0;
  return counters.PeakWorkingSetSize / 1024;
}

Result<Path> ExecutableFolder() {
  std::wstring name(MAX_PATH, L'\0');
  for (;;) {
    DWORD n = ::GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
    if (n == 0) return detail::Failure(ErrorCode::NotFound, "cannot find the program", Path());
    if (n < name.size()) return Path(name.substr(0, n)).parent_path();
    name.resize(name.size() * 2);
  }
}

std::vector<std::string> Utf8Arguments(int argc, char** argv) {
  int count = 0;
  wchar_t** wide = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  if (!wide) return std::vector<std::string>(argv, argv + argc);
  std::vector<std::string> arguments;
  for (int i = 0; i < count; ++i) arguments.push_back(ToUtf8(FromWide(wide[i], ::wcslen(wide[i]))));
  ::LocalFree(wide);
  return arguments;
}

void ReportFileSizeLimitAsError() {}  // Windows has no such limit

void UseBinaryStandardStreams() {
  ::_setmode(::_fileno(stdout), _O_BINARY);
  ::_setmode(::_fileno(stderr), _O_BINARY);
  ::SetConsoleOutputCP(CP_UTF8);
}

}  // namespace tq::os
