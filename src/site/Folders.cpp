#include "site/Folders.hpp"

#include <filesystem>

#include "base/Paths.hpp"
#include "base/Profile.hpp"

namespace tq {

namespace {
bool IsAbsolute(TextView path) {
  return !path.empty() && (path[0] == u'\\' || path[0] == u'/' || (path.size() >= 2 && path[1] == u':'));
}
Text FolderOf(TextView file) {
  size_t cut = file.find_last_of(u"\\/");
  return cut == TextView::npos ? Text(u".") : Text(file.substr(0, cut));
}
}  // namespace

std::optional<Text> ReadHostSetting(TextView iniPath, TextView section, TextView key, const CodePage& systemCodePage) {
  return ProfileFile::Read(ToFsPath(iniPath), systemCodePage).Get(section, key);
}

// A relative folder in the host ini is taken relative to the ini file itself, so that an
// installation can be moved as a whole; the suite's own installations use absolute paths.
Text Folders::Resolve(TextView folder) const {
  if (folder.empty() || IsAbsolute(folder)) return Text(folder);
  return JoinPath(FolderOf(host_.HostIniFile()), folder);
}

Text Folders::StdDataFolder() const {
  return Resolve(ReadProfileString(u"Custom", u"標準図ﾃﾞｰﾀ", u"", host_.HostIniFile(), codePage_));
}

std::optional<Text> Folders::SystemFolder() const {
  std::optional<Text> value = ReadHostSetting(host_.HostIniFile(), u"環境設定", u"ｼｽﾃﾑ", codePage_);
  if (!value) return std::nullopt;
  return Resolve(*value);
}

Status Folders::CheckSystemFolder() const {
  std::optional<Text> folder = SystemFolder();
  if (!folder || folder->empty())
    return MakeError(ErrorCode::NotFound, u"the system folder is not set (section 環境設定, key ｼｽﾃﾑ of " + host_.HostIniFile() + u")");
  std::error_code ec;
  if (!std::filesystem::is_directory(ToFsPath(*folder), ec))
    return MakeError(ErrorCode::NotFound, u"the system folder is missing: " + FromFsPath(ToFsPath(*folder)) +
                                              u" (section 環境設定, key ｼｽﾃﾑ of " + host_.HostIniFile() + u")");
  return {};
}

Text Folders::HostSystemFolder() const {
  std::optional<Text> value = host_.ConfigData(u"環境設定", u"ｼｽﾃﾑ");
  return value ? Resolve(*value) : Text();
}

std::optional<Text> Folders::AddinDataFolder() const {
  std::optional<Text> system = SystemFolder();
  if (!system) return std::nullopt;
  return JoinPath(JoinPath(*system, u"Addin"), u"標準図");
}

std::optional<Text> Folders::StdPartsFolder() const {
  std::optional<Text> value = ReadHostSetting(host_.HostIniFile(), u"環境設定", u"標準部品", codePage_);
  if (!value) return std::nullopt;
  return Resolve(*value);
}

Text Folders::StdDataFile(TextView name) const {
  Text folder = StdDataFolder();
  return folder.empty() ? Text() : JoinPath(folder, name);
}

Text Folders::AddinDataFile(TextView name) const {
  std::optional<Text> folder = AddinDataFolder();
  return folder ? JoinPath(*folder, name) : Text();
}

Text Folders::StdPartsFile(TextView name) const {
  std::optional<Text> folder = StdPartsFolder();
  return folder ? JoinPath(*folder, name) : Text();
}

// Without the host's export the folder is empty and the path starts with the takeoff
// folder's name, relative to the current folder.
Text Folders::TakeoffTableFile(TextView name) const {
  Text folder = HostSystemFolder();
  return JoinPath(folder.empty() ? Text(u"拾い") : JoinPath(folder, u"拾い"), name);
}

}  // namespace tq
