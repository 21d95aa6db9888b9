#pragma once
// What every tqstd command is given: the resolved host and the output stream.
#include <memory>
#include <ostream>

#include "common/StandaloneHostServices.hpp"
#include "site/Folders.hpp"
#if TQ_HAVE_CALC
#include "calc/CalcWorkbook.hpp"
#endif

namespace tq::cli {

struct Context {
  std::unique_ptr<CodePage> codePage;  // the system code page
  std::unique_ptr<StandaloneHostServices> host;
  std::unique_ptr<Folders> folders;
#if TQ_HAVE_CALC
  // The size workbooks' engine: one office for the whole run, started at its first use.
  std::unique_ptr<calc::CalcEngine> engine;
  std::unique_ptr<calc::CalcWorkbook> workbook;
#endif
  std::ostream* out = nullptr;
};

// A mistake of the user (a file that cannot be read, a bad value): exit status 1.
struct UserError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

void PrintLine(std::ostream& out, TextView text);

}  // namespace tq::cli
