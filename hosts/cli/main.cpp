// tqstd: the workflows of TQTStdInfo over DXF drawings, from the command line.
#include <CLI/CLI.hpp>

#include <iostream>

#include "base/Encoding.hpp"
#include "base/os/Os.hpp"
#include "cli/Cli.hpp"
#include "cli/Commands.hpp"

namespace tq::cli {

void PrintLine(std::ostream& out, TextView text) { out << ToUtf8(text) << '\n'; }

namespace {

struct GlobalOptions {
  std::optional<std::string> ini;
  std::optional<std::string> codepage;
};

Context MakeContext(const GlobalOptions& options) {
  std::string codepage = options.codepage.value_or("");
  if (codepage.empty()) codepage = ToUtf8(os::Environment(u"TQ_CODEPAGE").value_or(u""));
  if (codepage.empty()) codepage = "CP932";
  Result<CodePage> systemCodePage = CodePage::Open(codepage);
  if (!systemCodePage) throw UserError(systemCodePage.error().Describe());
  Context context;
  context.codePage = std::make_unique<CodePage>(std::move(*systemCodePage));
  try {
    context.host = std::make_unique<StandaloneHostServices>(StandaloneHostServices::FindHostIni(options.ini), *context.codePage);
  } catch (const std::runtime_error& e) {
    throw UserError(e.what());
  }
  context.folders = std::make_unique<Folders>(*context.host, *context.codePage);
#if TQ_HAVE_CALC
  context.engine = std::make_unique<calc::CalcEngine>();
  context.workbook = std::make_unique<calc::CalcWorkbook>(*context.engine);
  context.host->SetSizeWorkbook(context.workbook.get());
#endif
  context.out = &std::cout;
  return context;
}

}  // namespace

int Main(int argc, char** argv) {
  CLI::App app{"tqstd: checks and takes off the standard drawings (標準図) of a DXF drawing.\n"
               "Settings come from the host settings file: --ini FILE, else TQ_HOST_INI, else the\n"
               "bundled example installation."};
  app.require_subcommand(1);
  app.footer("Global options may stand before or after the command name. Exit status: 0 on success, 1 with a\n"
             "one-line message when a file cannot be read or a value is wrong, 2 on a usage error.");
  // A drawing may be named "/plans/a.dxf" on Windows too: "/" never starts an option.
  app.allow_windows_style_options(false);
  GlobalOptions options;
  app.add_option("--ini", options.ini, "host settings file (the host add-in's ini)");
  app.add_option("--codepage", options.codepage, "system code page of text files (default CP932, or TQ_CODEPAGE)");
  std::vector<Command> commands = RegisterCommands(app);
  for (CLI::App* sub : app.get_subcommands({})) sub->fallthrough();
  std::vector<std::string> arguments = os::Utf8Arguments(argc, argv);
  std::vector<const char*> utf8Argv;
  for (const std::string& argument : arguments) utf8Argv.push_back(argument.c_str());
  try {
    app.parse(static_cast<int>(utf8Argv.size()), utf8Argv.data());
  } catch (const CLI::ParseError& e) {
    return app.exit(e) == 0 ? 0 : 2;
  }
  try {
    Context context = MakeContext(options);
    for (Command& command : commands)
      if (command.app->parsed()) return command.run(context);
    return 2;
  } catch (const CLI::ValidationError& e) {
    std::cerr << "tqstd: " << e.what() << '\n';
    return 2;
  } catch (const std::exception& e) {  // a UserError, or a failure the commands did not foresee
    std::cerr << "tqstd: " << e.what() << '\n';
    return 1;
  }
}

}  // namespace tq::cli

int main(int argc, char** argv) {
  tq::os::UseBinaryStandardStreams();
  tq::os::ReportFileSizeLimitAsError();
  return tq::cli::Main(argc, argv);
}
