#include "calc/CalcEngine.hpp"

#include <com/sun/star/bridge/UnoUrlResolver.hpp>
#include <com/sun/star/connection/NoConnectException.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/lang/XComponent.hpp>
#include <cppuhelper/bootstrap.hxx>

#include <filesystem>
#include <random>
#include <thread>
#include <unistd.h>

#include "calc/UnoSession.hpp"
#include "ports/Workbook.hpp"

namespace tq::calc {
namespace {

using namespace css;

constexpr char16_t kInitFailed[] = u"Excelの初期化に失敗しました。";

Error StartFailure() { return WorkbookError(ErrorCode::CannotRead, WorkbookFailure::EngineStart, kInitFailed); }

// Unique per process and per start: two programs, or two engines of one program, never
// meet in one office.
std::string UniqueName() {
  std::random_device random;
  return "tq-calc-" + std::to_string(getpid()) + "-" + std::to_string(random()) + std::to_string(random());
}

// Where the office's pipe of that name lies while it listens; a killed office leaves it.
std::string PipeFile(const std::string& name) { return "/tmp/OSL_PIPE_" + std::to_string(getuid()) + "_" + name; }

}  // namespace

CalcEngine::CalcEngine(CalcEngineOptions options) : options_(std::move(options)) {}

CalcEngine::~CalcEngine() { Shutdown(); }

Status CalcEngine::Start() {
  if (session_ && !process_.Exited()) return {};
  if (session_) Lost();
  Status started = Launch();
  if (!started) Shutdown();
  return started;
}

Status CalcEngine::Launch() {
  std::string name = UniqueName();
  std::error_code error;
  std::filesystem::path folder = std::filesystem::temp_directory_path(error) / name;
  if (error || !std::filesystem::create_directory(folder, error)) return StartFailure();
  profile_ = folder.string();
  ++starts_;
  Status spawned = process_.Start(options_.office,
                                  {options_.office, "--headless", "--invisible", "--nologo", "--norestore",
                                   "--nodefault", "--nolockcheck", "--nofirststartwizard",
                                   "-env:UserInstallation=file://" + profile_,
                                   "--accept=pipe,name=" + name + ";urp;"},
                                  {profile_, PipeFile(name)});
  if (!spawned) return StartFailure();
  auto session = std::make_unique<UnoSession>();
  auto fail = [&session] {
    if (session->local.is()) {
      try {
        uno::Reference<lang::XComponent>(session->local, uno::UNO_QUERY_THROW)->dispose();
      } catch (const uno::Exception&) {
      }
    }
    return StartFailure();
  };
  try {
    session->local = cppu::defaultBootstrap_InitialComponentContext(TQ_UNO_INI);
    auto resolver = bridge::UnoUrlResolver::create(session->local);
    rtl::OUString url = rtl::OUString::fromUtf8(("uno:pipe,name=" + name + ";urp;StarOffice.ComponentContext").c_str());
    auto deadline = std::chrono::steady_clock::now() + options_.startTimeout;
    while (!session->remote.is()) {
      try {
        session->remote.set(resolver->resolve(url), uno::UNO_QUERY_THROW);
      } catch (const connection::NoConnectException&) {
        if (process_.Exited() || std::chrono::steady_clock::now() > deadline) return fail();
        std::this_thread::sleep_for(std::chrono::milliseconds(25));
      }
    }
    session->desktop = frame::Desktop::create(session->remote);
  } catch (const uno::Exception&) {
    return fail();
  }
  session_ = std::move(session);
  return {};
}

void CalcEngine::Lost() {
  if (session_) {
    // Disposing the local context ends its bridge to the office.
    try {
      uno::Reference<lang::XComponent>(session_->local, uno::UNO_QUERY_THROW)->dispose();
    } catch (const uno::Exception&) {
    }
    session_.reset();
  }
  process_.Kill();
  if (!profile_.empty()) {
    std::error_code error;
    std::filesystem::remove_all(profile_, error);
    profile_.clear();
  }
}

void CalcEngine::Shutdown() {
  if (session_) {
    try {
      session_->desktop->terminate();
    } catch (const uno::Exception&) {
      // The office may drop the connection while it ends: that is the end sought.
    }
    session_->desktop.clear();
    session_->remote.clear();
  }
  Lost();
}

}  // namespace tq::calc
