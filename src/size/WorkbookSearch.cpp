#include "size/WorkbookSearch.hpp"

#include "base/Paths.hpp"
#include "base/os/Os.hpp"

namespace tq {

WorkbookSearch FindSizeWorkbook(const Folders& folders, TextView sheetName) {
  Text folder = folders.StdDataFolder();
  if (folder.empty()) return {WorkbookSearchResult::NoDataFolder, {}};
  Result<std::vector<Text>> names = os::ListFolder(ToFsPath(folder), Text(sheetName) + u"*.xls");
  if (!names || names->empty()) return {WorkbookSearchResult::NotFound, {}};
  const Text& name = names->front();
  Text title = name.substr(0, name.rfind(u'.'));
  return {WorkbookSearchResult::Found, JoinPath(folder, title)};
}

}  // namespace tq
