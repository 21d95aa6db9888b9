#include "cli/TakeoffCommand.hpp"

#include "base/Paths.hpp"
#include "cli/DrawingSession.hpp"
#include "cli/Json.hpp"
#include "shell/TakeoffCheck.hpp"
#include "output/FileOutput.hpp"
#include "takeoff/TakeoffJob.hpp"

namespace tq::cli {

namespace {

int IndexOf(const std::string& value, std::initializer_list<const char*> names, const char* option) {
  int i = 0;
  for (const char* name : names) {
    if (value == name) return i;
    ++i;
  }
  throw UserError(std::string(option) + " takes one of the listed values, not " + value);
}

void PrintItems(std::ostream& out, const std::vector<TakeoffItem>& items) {
  out << "{\"columns\": [";
  for (size_t c = 0; c < kTakeoffColumns; ++c) out << (c ? ", " : "") << JsonString(TakeoffColumnHeaders()[c]);
  out << "], \"items\": [";
  for (size_t i = 0; i < items.size(); ++i) {
    out << (i ? ",\n  " : "\n  ") << "[";
    for (size_t c = 0; c < kTakeoffColumns; ++c) out << (c ? ", " : "") << JsonString(items[i][c]);
    out << "]";
  }
  out << "]}\n";
}

FileOutputChoices Choices(const Context& context, const TakeoffOptions& options) {
  FileOutputChoices choices = InitialChoices(*context.folders);
  if (!options.kind.empty()) choices.outputKind = IndexOf(options.kind, {"list", "aggregate", "cinet"}, "--kind");
  if (!options.separator.empty()) choices.separatorKind = IndexOf(options.separator, {"comma", "pipe", "tab"}, "--separator");
  if (options.categoryGiven) choices.category = FromUtf8(options.category);
  return choices;
}

}  // namespace

int RunTakeoff(const Context& context, const std::string& drawing, const TakeoffOptions& options) {
  DrawingSession session(context, drawing);
  std::ostream& out = *context.out;
  std::optional<StandardDrawings> found = FindStandardDrawingsForTakeoff(session.context());
  if (!found) return 0;
  if (!found->without.empty() && !options.json) out << ToUtf8(u"情報が設定されていない標準図があります。") << '\n';
  std::optional<TakeoffJob> job = TakeoffJob::Open(session.drawing(), *context.folders, found->with);
  if (!job) {
    out << ToUtf8(u"情報が設定されていません。") << '\n';
    return 0;
  }
  if (options.json) {
    PrintItems(out, job->items);
    return 0;
  }
  FileOutputChoices choices = Choices(context, options);
  // "出力" remembers the choices for the next output, as the dialog does.
  WriteLastValues(context.folders->AddinDataFile(u"ファイル出力前回値.dat"), choices);
  std::vector<Text> lines;
  if (choices.outputKind == 2) {
    // A command line has no earlier build: the CI-NET file takes a takeoff list built now.
    FileOutputChoices list = choices;
    list.outputKind = 0;
    OutputBuilder builder(LoadOutputFormat(ToFsPath(context.folders->AddinDataFile(u"標準図用出力フォーマット.csv"))), job->tables);
    lines = builder.Build(job->data, false, list.separatorKind, list.category);
  }
  OutputResult result;
  try {
    result = OutputTakeoff(job->data, job->tables, *context.folders, choices, FromFsPath(session.path()), lines,
                           [&](TextView name) -> std::optional<std::filesystem::path> {
                             if (!options.output.empty()) return std::filesystem::path(std::u8string(options.output.begin(), options.output.end()));
                             return ToFsPath(Text(name) + u".txt");
                           });
  } catch (const OutputFormatError& e) {
    throw UserError(std::string(e.what()) + "; no file was written");
  }
  if (result.written) out << "wrote " << Utf8Path(result.path) << " (" << lines.size() << " lines)\n";
  else if (result.path.empty()) out << "nothing written: " << ToUtf8(result.reason) << '\n';
  else throw UserError("cannot write " + Utf8Path(result.path));
  if (options.registerRows) {
    RegisterTakeoff(session.drawing(), job->data);
    try {
      session.drawing().Save();
    } catch (const std::exception& e) {
      throw UserError(e.what());
    }
    out << "registered the rows in " << Utf8Path(session.path()) << '\n';
  }
  return 0;
}

}  // namespace tq::cli
