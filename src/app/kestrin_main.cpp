#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>
#include <QTextStream>
#include <QTimer>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "app/Application.h"
#include "app/CommandGate.h"
#include "app/CommandLineOptions.h"
#include "app/FoldersWithFonts.h"
#include "app/FontUpdate.h"
#include "app/Main.h"
#include "app/PathText.h"
#include "app/help/HelpKey.h"
#include "app/help/HelpWindow.h"
#include "app/theme/Theme.h"
#include "motion/KeptParametersFolder.h"
#include "platform/boards/BoardAgent.h"
#include "platform/desktop/CompiledHelp.h"
#include "platform/desktop/DataFolder.h"
#include "platform/desktop/DesktopFolders.h"
#include "platform/desktop/EndRequests.h"
#include "platform/desktop/QtDialogs.h"
#include "platform/desktop/SystemSleepBlocker.h"
#include "platform/desktop/SystemSoundPlayer.h"
#include "platform/files/SystemDisk.h"
#include "platform/net/CurlTransfer.h"
#include "platform/process/StandardStreams.h"
#include "update/UpdateServer.h"
#include "update/UpdateUtils.h"

namespace {

using namespace kestrin;

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

int Tell(std::FILE* where, const QString& text, int code) {
  QTextStream(where) << text;
  return code;
}

/// Where the program keeps what is this person's own.
std::filesystem::path DataFolder() {
  const std::filesystem::path folder = desktop::DataFolder();
  return folder.empty() ? app::PathOf(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)) : folder;
}

/// The help, read when it is asked for the first time.
class Help {
 public:
  explicit Help(const std::filesystem::path& programFolder)
      : m_file(programFolder / platform::CompiledHelp::kFileName) {
    QObject::connect(&m_key, &app::HelpKey::topicRequested, &m_key, [this](app::HelpContext topic) {
      if (m_source == nullptr) m_source = std::make_unique<platform::CompiledHelp>(m_file);
      if (m_window == nullptr) m_window = std::make_unique<app::HelpWindow>(*m_source);
      m_window->ShowTopic(topic);
    });
  }

 private:
  std::filesystem::path m_file;
  app::HelpKey m_key;
  std::unique_ptr<platform::CompiledHelp> m_source;
  std::unique_ptr<app::HelpWindow> m_window;
};

int Run(app::Application& application, const app::CommandLineOptions& options) {
  app::Theme::Apply(application, app::ColorScheme::System);
  base::SystemClock clock;
  files::SystemDisk disk;
  app::CommandGate gate;
  const boards::BoardAgent board = boards::MakeBoardAgent(options.board, clock, gate.Pump(), disk);
  if (!board.problem.empty()) return Tell(stderr, "kestrin: " + QString::fromStdString(board.problem) + '\n', kFailed);

  const std::filesystem::path data = DataFolder();
  motion::KeptParametersFolder kept(data / motion::KeptParametersFolder::kFolderName, disk);
  QSettings settings(app::TextOf(data / "kestrin.ini"), QSettings::IniFormat);
  const std::unique_ptr<sound::SoundPlayer> player = desktop::MakeSystemSoundPlayer(clock);
  const std::array places{options.programFolder, data};
  const std::filesystem::path fonts = update::UpdateUtils::PlaceIn(places);
  const desktop::DesktopFolders desktopFolders;
  const app::FoldersWithFonts folders(desktopFolders, fonts);
  desktop::EndRequests ends;
  desktop::QtDialogs dialogs;
  desktop::SystemSleepBlocker sleep;
  Help help(options.programFolder);
  net::CurlTransfer transfer(gate.Pump());
  app::FontUpdate update(transfer, options.updateServer, fonts, disk, gate);

  app::Main window({*board.agent, gate, clock, disk, dialogs, *player, folders, kept, sleep, &update, settings,
                    options.programFolder, data});
  dialogs.SetWindow(&window);
  QObject::connect(&application, &app::Application::mishap, &window,
                   [&dialogs](const QString& text) { dialogs.ShowError(text, {}); });
  QObject::connect(&window, &app::Main::closed, &application, &QCoreApplication::quit, Qt::QueuedConnection);
  QObject::connect(&ends, &desktop::EndRequests::arrived, &window, [&] {
    // The end is certain before any question is closed: its answer must not begin anything.
    window.EndNow();
    dialogs.Dismiss();
  });
  ends.SetIsOver([&window] { return window.IsOver(); });
  if (!window.StartUp()) return ends.ExitCode(kDone);
  window.show();
  // Once the window can be seen.
  QTimer open;
  open.setSingleShot(true);
  QObject::connect(&open, &QTimer::timeout, &window, [&] { window.OpenSet(options.set); });
  if (!options.set.empty()) open.start();
  return ends.ExitCode(QApplication::exec());
}

}  // namespace

int main(int argc, char** argv) {
  process::GuardStandardStreams();
  app::Application application(argc, argv);
  QCoreApplication::setApplicationName("Kestrin Launcher");
  QCoreApplication::setApplicationVersion(KESTRIN_VERSION);
  QGuiApplication::setDesktopFileName("kestrin");
  const app::CommandLineOptions::Parsed parsed =
      app::CommandLineOptions::Parse(QCoreApplication::arguments(), app::PathOf(QCoreApplication::applicationDirPath()),
                                     std::getenv(update::UpdateServer::kEnvironment));
  if (!parsed.answer.isEmpty()) return Tell(stdout, parsed.answer, kDone);
  if (!parsed.problem.isEmpty()) return Tell(stderr, "kestrin: " + parsed.problem + '\n', kWrongUsage);
  try {
    return Run(application, parsed.options);
  } catch (const std::exception& error) {
    return Tell(stderr, QString("kestrin: %1\n").arg(error.what()), kFailed);
  }
}
