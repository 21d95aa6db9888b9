#pragma once
// The LibreOffice engine behind the size workbooks: one headless, hidden office with a user
// profile and a connection name of its own, started at the first use and reused by every
// later import and registration until Shutdown. Owned by whoever creates it (the host) and
// handed to the workbooks; no office process outlives it or this program.
#include <chrono>
#include <memory>
#include <string>

#include "base/Result.hpp"
#include "calc/OfficeProcess.hpp"

namespace tq::calc {

struct CalcEngineOptions {
  std::string office = TQ_SOFFICE_PROGRAM;  // the office's launcher
  std::chrono::milliseconds startTimeout{20000};
};

struct UnoSession;  // the connection, known only to the backend's sources

class CalcEngine {
 public:
  explicit CalcEngine(CalcEngineOptions options = {});
  ~CalcEngine();
  CalcEngine(const CalcEngine&) = delete;
  CalcEngine& operator=(const CalcEngine&) = delete;

  // Starts the office and connects to it unless that is done; fails with
  // "Excelの初期化に失敗しました。" (systemCode EngineStart) within the start timeout.
  Status Start();
  // Ends the office (its whole process group) and removes its profile.
  void Shutdown();
  bool Running() const { return session_ != nullptr; }
  // The temporary folder of the office's user profile; empty when not running.
  const std::string& ProfileFolder() const { return profile_; }
  // How many times an office was started by this engine.
  int Starts() const { return starts_; }

  UnoSession* session() { return session_.get(); }
  // Called by a workbook that found the office gone: the next Start begins a new one.
  void Lost();

 private:
  Status Launch();

  CalcEngineOptions options_;
  OfficeProcess process_;
  std::unique_ptr<UnoSession> session_;
  std::string profile_;
  int starts_ = 0;
};

}  // namespace tq::calc
