#pragma once
// An installation, an editor and drawings made in a test, for the rules of the drawing.
#include <deque>
#include <memory>

#include "base/Encoding.hpp"
#include "drawing/FrameGrid.hpp"
#include "dxf/DxfDrawing.hpp"
#include "support/DxfText.hpp"
#include "support/FakeHost.hpp"
#include "support/TempDir.hpp"

namespace tq::test {

// A host ini and a data folder whose "標準図設定.ini" holds `settings` (no data folder when
// `withDataFolder` is false).
struct Site {
  TempDir dir;
  std::unique_ptr<FakeHost> host;
  std::unique_ptr<Folders> folders;
  std::unique_ptr<StdSettings> settings;

  explicit Site(const std::u16string& settingsText = u"", bool withDataFolder = true) {
    std::filesystem::create_directories(dir / "data");
    dir.Write("Velum.ini", EncodeCodePage(u"[環境設定]\r\nｼｽﾃﾑ=system\r\n標準部品=parts\r\n[Custom]\r\n標準図ﾃﾞｰﾀ=" +
                                              std::u16string(withDataFolder ? u"data" : u"") + u"\r\n", "CP932"));
    if (!settingsText.empty()) dir.Write("data/標準図設定.ini", EncodeCodePage(settingsText, "CP932"));
    host = std::make_unique<FakeHost>(dir.TextPath("Velum.ini"));
    folders = std::make_unique<Folders>(*host, host->codePage());
    settings = std::make_unique<StdSettings>(*folders);
  }
};

class RecordingEditor : public Editor {
 public:
  std::deque<PickResult> points;
  Text printed;
  int prompts = 0, waitBegun = 0, waitEnded = 0, displayUpdates = 0;
  std::function<void()> onWaitCursor, onDisplayUpdate;

  void ActivateDrawingWindow() override {}
  PickResult GetPoint(TextView prompt) override {
    ++prompts;
    printed += prompt;
    if (points.empty()) return {PickStatus::Cancel, {}};
    PickResult r = points.front();
    points.pop_front();
    return r;
  }
  void Print(TextView text) override { printed += text; }
  void UpdateDisplay() override {
    ++displayUpdates;
    if (onDisplayUpdate) onDisplayUpdate();
  }
  void BeginWaitCursor() override {
    ++waitBegun;
    if (onWaitCursor) onWaitCursor();
  }
  void EndWaitCursor() override { ++waitEnded; }
};

inline std::unique_ptr<dxf::DxfDrawing> DrawingOf(const Tags& entities) {
  return std::make_unique<dxf::DxfDrawing>(dxf::Document::Read(R12Drawing(entities)).value(), "test.dxf");
}

// A drawing, its editor and its site, wired as the rules expect.
struct Scene {
  Site site;
  RecordingEditor editor;
  std::unique_ptr<dxf::DxfDrawing> drawing;
  std::unique_ptr<DrawingContext> context;
  MarkingState marking;

  explicit Scene(const Tags& entities, const std::u16string& settingsText = u"", bool withDataFolder = true)
      : site(settingsText, withDataFolder), drawing(DrawingOf(entities)) {
    LayerSettings layers = site.settings->LoadLayerSettings().value_or(LayerSettings{u"5", u"4"});
    context = std::make_unique<DrawingContext>(DrawingContext{*drawing, editor, *site.settings, layers, marking});
  }
  ObjectId Id(const std::u16string& handle) const { return drawing->FindHandle(handle); }
};

// Extended data of one application holding one line.
inline Tags Record(const std::string& app, const std::string& line) { return {{1001, app}, {1000, line}}; }

inline Tags PointTags(const std::string& handle, double x, double y, const std::string& layer) {
  return {{0, "POINT"}, {5, handle}, {8, layer}, {10, std::to_string(x)}, {20, std::to_string(y)}, {30, "0.0"}};
}

inline Tags ColouredLine(const std::string& handle, double x1, double y1, double x2, double y2, int colour) {
  Tags t = LineTags(handle, x1, y1, x2, y2);
  if (colour != 256) t.insert(t.begin() + 3, {62, std::to_string(colour)});
  return t;
}

}  // namespace tq::test
