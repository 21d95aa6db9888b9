#include "cli/TakeoffCommand.hpp"

#include <iostream>

#include "base/Paths.hpp"
#include "drawing/FrameGrid.hpp"
#include "cli/DrawingSession.hpp"
#include "common/Json.hpp"
#include "shell/TakeoffCheck.hpp"
#include "output/FileOutput.hpp"
#include "site/Settings.hpp"
#include "takeoff/TakeoffJob.hpp"

namespace tq::cli {

namespace {

template <class Kind>
Kind KindNamed(const std::string& value, std::initializer_list<std::pair<const char*, Kind>> names, const char* option) {
  for (auto [name, kind] : names)
    if (value == name) return kind;
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
  if (!options.kind.empty())
    choices.outputKind = KindNamed<OutputKind>(
        options.kind, {{"list", OutputKind::List}, {"aggregate", OutputKind::Aggregate}, {"cinet", OutputKind::Cinet}}, "--kind");
  if (!options.separator.empty())
    choices.separatorKind = KindNamed<SeparatorKind>(
        options.separator, {{"comma", SeparatorKind::Comma}, {"pipe", SeparatorKind::Pipe}, {"tab", SeparatorKind::Tab}},
        "--separator");
  if (options.categoryGiven) choices.category = FromUtf8(options.category);
  return choices;
}

// The original pairing gives the rows of a drawing of two or more records back to other
// records: the user is told which drawings, and how to keep every row where it was.
void WarnOfMovingRows(const Drawing& drawing, const TakeoffJob& job) {
  if (job.pairing != RowPairing::Shifted) return;
  std::vector<ObjectId> moving = EntitiesWhoseRowsMove(job.data);
  if (moving.empty()) return;
  Text names;
  for (ObjectId text : moving) {
    Text name;
    ReadSheetName(drawing, text, name);
    names += (names.empty() ? u"" : u", ") + name;
  }
  std::cerr << "warning: registering moves values between the records of the standard drawings " << ToUtf8(names)
            << " (two or more records each: rows go back shifted and the records swap numbers); set "
            << ToUtf8(kRegisterToOriginKey.key) << "=1 in [" << ToUtf8(kRegisterToOriginKey.section)
            << "] of the settings file to register every row back to its own record\n";
}

}  // namespace

int RunTakeoff(const Context& context, const std::string& drawing, const TakeoffOptions& options) {
  // The reference tables and the output settings are all in the system folder.
  if (Status system = context.folders->CheckSystemFolder(); !system) throw UserError(system.error().Describe());
  // Registering saves the drawing: it is locked before anything is read or written.
  DrawingSession session(context, drawing, options.registerRows ? PathOf(drawing) : std::filesystem::path());
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
  // The last values are a convenience: a file that cannot be written does not stop the output.
  (void)WriteLastValues(LastValuesFile(*context.folders), choices, *context.codePage);
  OutputLineList lines;
  if (choices.outputKind == OutputKind::Cinet) {
    // A command line has no earlier build: the CI-NET file takes a takeoff list built now.
    OutputBuilder builder(LoadOutputFormat(ToFsPath(OutputFormatFile(*context.folders)), *context.codePage), job->tables);
    Result<OutputLineList> built = builder.BuildWithOrigins(job->data, false, choices.separatorKind, choices.category);
    if (!built) throw UserError(built.error().Describe() + "; no file was written");
    lines = std::move(*built);
  }
  OutputHooks hooks;
  hooks.choosePath = [&](TextView name) -> std::optional<std::filesystem::path> {
    if (!options.output.empty()) return std::filesystem::path(std::u8string(options.output.begin(), options.output.end()));
    return ToFsPath(Text(name) + u".txt");
  };
  hooks.sheetName = [&](ObjectId text) {
    Text name;
    ReadSheetName(session.drawing(), text, name);
    return name;
  };
  // The same lines the dialogs print on the command line.
  bool warned = false;
  hooks.warn = [&](TextView warning) {
    std::cerr << ToUtf8(warning);
    warned = true;
  };
  Result<OutputResult> result =
      OutputTakeoff(job->data, job->tables, *context.folders, choices, FromFsPath(session.path()), lines, hooks);
  if (warned) std::cerr << '\n';
  if (!result)
    throw UserError(result.error().Describe() + "; no file was written" +
                    (options.registerRows ? ", and the drawing was not saved" : ""));
  bool wrote = result->outcome == OutputResult::Outcome::Written;
  std::string written = wrote ? "wrote " + Utf8Path(result->path) + " (" + std::to_string(lines.lines.size()) + " lines)\n"
                              : "nothing written: nothing to output\n";
  // With registration, nothing is reported until both the file and the drawing are written;
  // when the drawing cannot be, the message says which of the two now exists.
  if (options.registerRows) {
    WarnOfMovingRows(session.drawing(), *job);
    std::string fileState = wrote ? "; " + Utf8Path(result->path) + " was written, the rows are not registered"
                                  : "; no takeoff file was written";
    if (Status registered = RegisterTakeoff(session.drawing(), job->data, job->pairing); !registered)
      throw UserError(registered.error().Describe() + "; " + Utf8Path(session.path()) + " is as it was" + fileState);
    if (Status saved = session.drawing().Save(); !saved) throw UserError(saved.error().Describe() + fileState);
  }
  out << written;
  if (options.registerRows) out << "registered the rows in " << Utf8Path(session.path()) << '\n';
  return 0;
}

}  // namespace tq::cli
