#pragma once
// What every tqstd command is given: the resolved host and the output stream.
#include <memory>
#include <ostream>

#include "common/StandaloneHostServices.hpp"
#include "site/Folders.hpp"

namespace tq::cli {

struct Context {
  std::unique_ptr<CodePage> codePage;  // the system code page
  std::unique_ptr<StandaloneHostServices> host;
  std::unique_ptr<Folders> folders;
  std::ostream* out = nullptr;
};

// A mistake of the user (a file that cannot be read, a bad value): exit status 1.
struct UserError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

void PrintLine(std::ostream& out, TextView text);

}  // namespace tq::cli
