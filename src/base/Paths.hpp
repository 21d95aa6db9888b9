#pragma once
// Paths are built in one place: folders from settings may be Windows paths.
#include <filesystem>
#include <optional>
#include <string>

#include "base/Result.hpp"
#include "base/Text.hpp"

namespace tq {

namespace os {
struct FaultPlan;
}

// The folder, a separator unless the folder already ends with one, then the name.
Text JoinPath(TextView folder, TextView name);

// A path for the file system: on POSIX every backslash is a separator.
std::filesystem::path ToFsPath(TextView path);
Text FromFsPath(const std::filesystem::path& path);

// The whole file, or nothing when it cannot be read.
std::optional<std::string> ReadFileBytes(const std::filesystem::path& path);
// Written to a temporary file beside it and renamed into its place, so that a failure (a full
// disk, a size limit) leaves what was there before whole; an error naming the file and the cause
// when it cannot be written. `faults` is for tests of those failures.
Status WriteFileBytes(const std::filesystem::path& path, std::string_view bytes, const os::FaultPlan* faults = nullptr);

}  // namespace tq
