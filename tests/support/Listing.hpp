#pragma once
// What ezdxf reads from a drawing (tests/interop/ezdxf_tool.py read), parsed.
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "base/Paths.hpp"
#include "base/Text.hpp"

namespace tq::test {

struct ListedEntity {
  std::string handle, type, layer;
  int colour = 256;
  std::string text;
};

struct Listing {
  std::vector<ListedEntity> entities;
  std::map<std::pair<std::string, std::string>, std::vector<std::string>> xdata;  // (handle, app) → lines
  std::vector<std::string> appIds;
  int auditErrors = -1;
  std::vector<std::string> auditMessages;
};

inline std::string Unescape(const std::string& s) {
  std::string out;
  for (size_t i = 0; i < s.size(); ++i) {
    if (s[i] == '\\' && i + 1 < s.size()) {
      char c = s[++i];
      out += c == 't' ? '\t' : c == 'n' ? '\n' : c;
    } else {
      out += s[i];
    }
  }
  return out;
}

inline std::vector<std::string> SplitTabs(const std::string& line) {
  std::vector<std::string> fields;
  std::string field;
  std::istringstream in(line);
  while (std::getline(in, field, '\t')) fields.push_back(Unescape(field));
  if (!line.empty() && line.back() == '\t') fields.emplace_back();
  return fields;
}

inline Listing ParseListing(const std::string& text) {
  Listing listing;
  std::istringstream in(text);
  std::string line;
  while (std::getline(in, line)) {
    std::vector<std::string> f = SplitTabs(line);
    if (f.empty()) continue;
    if (f[0] == "E" && f.size() >= 6) listing.entities.push_back({f[1], f[2], f[3], std::stoi(f[4]), f[5]});
    else if (f[0] == "X" && f.size() >= 4) listing.xdata[{f[1], f[2]}].push_back(f[3]);
    else if (f[0] == "X" && f.size() == 3) listing.xdata[{f[1], f[2]}].push_back("");
    else if (f[0] == "A" && f.size() >= 2) listing.appIds.push_back(f[1]);
    else if (f[0] == "AUDIT" && f.size() >= 2) listing.auditErrors = std::stoi(f[1]);
    else if (f[0] == "AUDIT-ERROR" && f.size() >= 2) listing.auditMessages.push_back(f[1]);
  }
  return listing;
}

inline std::string Fixture(const std::string& name) { return std::string(TQ_FIXTURES) + "/" + name; }

inline std::string ReadFixture(const std::string& name) {
  return ReadFileBytes(std::filesystem::path(Fixture(name))).value_or("");
}

}  // namespace tq::test
