// SPDX-License-Identifier: MIT
#include <QFileInfo>
#include <QProcess>
#include <QSettings>
#include <QStandardPaths>
#include <QTextStream>
#include <cstdio>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "core/doctor/Diagnosis.h"
#include "core/doctor/DoctorReport.h"
#include "core/doctor/Interview.h"
#include "core/motion/KeptParametersFolder.h"
#include "core/sound/FilePlayer.h"
#include "core/sound/unsaved/UnsavedFolder.h"
#include "core/update/FontsPlace.h"
#include "core/update/UpdateServer.h"
#include "platform/archive/ZipArchives.h"
#include "platform/audio/SystemAudioTools.h"
#include "platform/boards/BoardAgent.h"
#include "platform/desktop/CompiledHelp.h"
#include "platform/desktop/DataFolder.h"
#include "platform/desktop/DesktopFolders.h"
#include "platform/desktop/EndRequests.h"
#include "platform/desktop/ExecutableFolder.h"
#include "platform/desktop/ProgramFolder.h"
#include "platform/desktop/QtDialogs.h"
#include "platform/desktop/RunningWindow.h"
#include "platform/desktop/SystemSleepBlocker.h"
#include "platform/doctor/SystemSurvey.h"
#include "platform/doctor/UdevRule.h"
#include "platform/files/LeftBehind.h"
#include "platform/files/SystemDisk.h"
#include "platform/net/CurlTransfer.h"
#include "platform/process/Environment.h"
#include "platform/process/StandardStreams.h"
#include "platform/speaker/SystemSoundOutput.h"
#include "programs/AboutProgram.h"
#include "programs/ChosenFacts.h"
#include "programs/CommandLineOptions.h"
#include "simulator/MovedBySaber.h"
#include "ui/doctor/DoctorMeans.h"
#include "ui/help/HelpKey.h"
#include "ui/help/HelpWindow.h"
#include "ui/kit/CommandGate.h"
#include "ui/kit/LatestJob.h"
#include "ui/kit/PathText.h"
#include "ui/kit/ViewMenu.h"
#include "ui/window/Application.h"
#include "ui/window/Examples.h"
#include "ui/window/FoldersWithFonts.h"
#include "ui/window/FontUpdate.h"
#include "ui/window/Main.h"
#include "ui/window/PackedSets.h"
#include "ui/window/SetFile.h"

namespace {

using namespace kestrin;
using platform::desktop::RunningWindow;

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

int Tell(std::FILE* where, const QString& text, int code) {
  QTextStream(where) << text;
  return code;
}

/// Where the program keeps what is this person's own.
std::filesystem::path DataFolder() {
  const std::filesystem::path folder = platform::desktop::DataFolder();
  return folder.empty() ? ui::kit::PathOf(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)) : folder;
}

/// The folder that the program stands in.
std::filesystem::path ExecutableFolder() {
  const std::filesystem::path folder = platform::desktop::ExecutableFolder();
  return folder.empty() ? ui::kit::PathOf(QCoreApplication::applicationDirPath()) : folder;
}

/// The help, read when it is asked for the first time.
class Help {
 public:
  explicit Help(const std::filesystem::path& programFolder)
      : m_file(programFolder / platform::desktop::CompiledHelp::kFileName) {
    QObject::connect(&m_key, &ui::help::HelpKey::topicRequested, &m_key,
                     [this](ui::kit::HelpContext topic) { Show(topic); });
  }

  void Show(ui::kit::HelpContext topic) {
    if (m_source == nullptr) m_source = std::make_unique<platform::desktop::CompiledHelp>(m_file);
    if (m_window == nullptr) m_window = std::make_unique<ui::help::HelpWindow>(*m_source);
    m_window->ShowTopic(topic);
  }

 private:
  std::filesystem::path m_file;
  ui::help::HelpKey m_key;
  std::unique_ptr<platform::desktop::CompiledHelp> m_source;
  std::unique_ptr<ui::help::HelpWindow> m_window;
};

/// The doctor over this computer and the chosen board. All must outlive it.
ui::doctor::DoctorMeans MakeDoctor(core::doctor::LinkSurvey& survey, const platform::boards::BoardChoice& choice,
                                   const core::device::THIDagent& agent, const core::base::Clock& clock) {
  using core::doctor::Answers;
  using core::doctor::Diagnosis;
  using core::doctor::LinkFacts;
  using platform::doctor::UdevRule;
  return {
      survey,
      std::make_shared<UdevRule>(UdevRule::Asks::AtDesktop),
      [&choice, &agent](LinkFacts& facts) { programs::NarrowToChoice(facts, choice, agent.AccessProblem()); },
      core::doctor::Diagnose,
      [&clock](core::device::TLS& board, const std::function<bool()>& goOn) {
        return core::doctor::Interview(board, clock, goOn);
      },
      [](const LinkFacts& facts, const std::optional<Answers>& answers, const Diagnosis& diagnosis, bool withSerial) {
        return core::doctor::DoctorReport(facts, answers, diagnosis, {"kestrin " KESTRIN_VERSION, withSerial});
      }};
}

/// The arguments that Qt has left, as paths, where those are bytes that its texts may not tell.
std::vector<std::filesystem::path> Paths([[maybe_unused]] int argc, [[maybe_unused]] char** argv) {
#ifdef _WIN32
  return {};
#else
  return {argv, argv + argc};
#endif
}

/// Leads what other starts and the desktop ask for to the window, until its end is certain.
void Connect(RunningWindow& running, ui::window::Application& application, ui::window::Main& window) {
  QObject::connect(&running, &RunningWindow::asked, &window,
                   [&window](const std::filesystem::path& path, const QByteArray& activation) {
                     window.ComeToFront(activation);
                     if (!path.empty()) window.OpenPath(path);
                   });
  QObject::connect(&window, &ui::window::Main::ending, &running, &RunningWindow::TakeNoMore);
  QObject::connect(&application, &ui::window::Application::openRequested, &window, &ui::window::Main::OpenPath);
}

/// Clears away what the program left when it was killed, in the folders that it writes into: its own, that of the
/// sounds it has made, and those of the recent sets. Beside everything else: any of them may be on a slow disk.
void ClearAway(ui::kit::LatestJob& job, const std::filesystem::path& data, const std::filesystem::path& documents,
               const QSettings& settings) {
  using core::sound::UnsavedFolder;
  std::set<std::filesystem::path> folders{data, data / UnsavedFolder::kFolderName,
                                          data / core::motion::KeptParametersFolder::kFolderName};
  for (const std::filesystem::path& set : ui::window::SetFile::RecentSets(settings)) folders.insert(set.parent_path());
  const std::filesystem::path made = documents / ui::window::PackedSets::kFolderName;
  job.Start([folders, made](const ui::kit::LatestJob::GoOn& goOn, const ui::kit::LatestJob::Deliver&) {
    std::set<std::filesystem::path> all = folders;
    std::error_code error;
    all.insert(made);
    for (std::filesystem::directory_iterator entry(made, error), end; !error && entry != end; entry.increment(error))
      if (std::error_code ignored; std::filesystem::is_directory(entry->symlink_status(ignored)))
        all.insert(entry->path());
    for (const std::filesystem::path& folder : all)
      if (goOn()) platform::files::RemoveLeftBehind(folder);
  });
}

/// What the program ends with.
struct End {
  int code = kDone;
  /// What other starts have handed over, and the window did not come to before it was closed.
  std::vector<std::filesystem::path> unopened;
};

End Run(ui::window::Application& application, const programs::CommandLineOptions& options, core::base::Disk& disk,
        RunningWindow& running, RunningWindow::Outcome start) {
  core::base::SystemClock clock;
  ui::kit::CommandGate gate;
  simulator::MovedBySaber moved;
  platform::boards::BoardChoice choice = options.board;
  choice.simulated.sensor = [&moved] { return moved.Next(); };
  const auto board = platform::boards::MakeBoardAgent(choice, clock, gate.Pump(), disk);
  if (!board) return {Tell(stderr, "kestrin: " + QString::fromStdString(board.Text()) + '\n', kFailed), {}};

  const std::filesystem::path data = DataFolder();
  core::motion::KeptParametersFolder kept(data / core::motion::KeptParametersFolder::kFolderName, disk);
  QSettings settings(ui::kit::TextOf(data / "kestrin.ini"), QSettings::IniFormat);
  ui::kit::Theme::Apply(application, ui::kit::ViewMenu::Chosen(settings));
  core::sound::FilePlayer player(platform::speaker::MakeSystemSoundOutput(platform::speaker::kFileBuffer));
  const std::unique_ptr<core::sound::SoundOutput> output =
      platform::speaker::MakeSystemSoundOutput(platform::speaker::kLiveBuffer);
  const std::vector<std::filesystem::path> places =
      platform::desktop::FoldersToWriteIn(options.programFolder, ExecutableFolder(), data);
  const std::filesystem::path fonts = core::update::FontsPlaceIn(places);
  const platform::desktop::DesktopFolders desktopFolders;
  const ui::window::FoldersWithFonts folders(desktopFolders, fonts, ui::window::ExamplesIn(options.programFolder));
  platform::desktop::EndRequests ends;
  platform::desktop::QtDialogs dialogs;
  platform::desktop::SystemSleepBlocker sleep;
  Help help(options.programFolder);
  platform::net::CurlTransfer transfer(gate.Pump());
  transfer.Trust(platform::process::EnvironmentText(core::update::UpdateServer::kCertificates).value_or(""));
  ui::window::FontUpdate update(transfer, options.updateServer, fonts, disk, gate);

  platform::doctor::SystemSurvey survey;
  const ui::doctor::DoctorMeans doctor = MakeDoctor(survey, options.board, **board, clock);

  platform::audio::SystemAudioTools audio;
  platform::archive::ZipArchives archives(disk);
  const auto move = [&moved](core::saber::Event event) {
    return event == core::saber::Event::Hit ? moved.Hit() : moved.Swing();
  };
  ui::window::Main window({**board,
                           gate,
                           clock,
                           disk,
                           dialogs,
                           player,
                           folders,
                           kept,
                           sleep,
                           &update,
                           settings,
                           options.programFolder,
                           places,
                           &doctor,
                           [&] {
                             return programs::AboutProgram(KESTRIN_VERSION, {options.programFolder, data, fonts}); },
                           &audio,
                           &archives,
                           output.get(),
                           data,
                           move});
  dialogs.SetWindow(&window);
  QObject::connect(&application, &ui::window::Application::mishap, &window,
                   [&dialogs](const QString& text) { dialogs.ShowError(text, {}); });
  QObject::connect(&window, &ui::window::Main::closed, &application, &QCoreApplication::quit, Qt::QueuedConnection);
  QObject::connect(&window, &ui::window::Main::helpRequested, &window,
                   [&help](ui::kit::HelpContext topic) { help.Show(topic); });
  QObject::connect(&ends, &platform::desktop::EndRequests::arrived, &window, [&] {
    // The end is certain before any question is closed: its answer must not begin anything.
    window.EndNow();
    dialogs.Dismiss();
  });
  ends.SetIsOver([&window] { return window.IsOver(); });
  Connect(running, application, window);
  const auto end = [&](int code) {
    const int ended = ends.ExitCode(code);
    // Who asks the program to end does not want to see it again.
    return ended == kDone ? End{ended, window.TakeUnopened()} : End{ended, {}};
  };
  if (!window.StartUp()) return end(kDone);
  window.show();
  ui::kit::LatestJob clearing;
  ClearAway(clearing, data, desktopFolders.Documents(), settings);
  if (start == RunningWindow::Outcome::Unanswered)
    window.Tell(
        "Another window of this program is open and does not answer. This is a new one: close the other when you can.");
  if (!options.path.empty()) window.OpenPath(options.path);
  return end(QApplication::exec());
}

/// Starts the program anew for each of these; the first becomes the window.
void StartFor(const std::vector<std::filesystem::path>& paths) {
  for (const std::filesystem::path& path : paths) {
    QProcess start;
    start.setProgram(QCoreApplication::applicationFilePath());
    start.setArguments({ui::kit::TextOf(path)});
    // Whoever reads what this program says is not to wait for the next one's end.
    start.setStandardOutputFile(QProcess::nullDevice());
    start.setStandardErrorFile(QProcess::nullDevice());
    start.startDetached();
  }
}

}  // namespace

int main(int argc, char** argv) {
  platform::process::GuardStandardStreams();
  // Qt takes it for the first window that it shows; another one may need it.
  const QByteArray activation = qgetenv("XDG_ACTIVATION_TOKEN");
  ui::window::Application application(argc, argv);
  QCoreApplication::setApplicationName("Kestrin Launcher");
  QCoreApplication::setApplicationVersion(KESTRIN_VERSION);
  QGuiApplication::setDesktopFileName("kestrin");
  const std::optional<std::string> server =
      platform::process::EnvironmentText(core::update::UpdateServer::kEnvironment);
  const programs::CommandLineOptions::Parsed parsed = programs::CommandLineOptions::Parse(
      QCoreApplication::arguments(), platform::desktop::ProgramFolderOf(ExecutableFolder()),
      server ? server->c_str() : nullptr, Paths(argc, argv));
  if (!parsed.answer.isEmpty()) return Tell(stdout, parsed.answer, kDone);
  if (!parsed.problem.isEmpty()) return Tell(stderr, "kestrin: " + parsed.problem + '\n', kWrongUsage);
  try {
    const programs::CommandLineOptions& options = parsed.options;
    platform::files::SystemDisk disk;
    auto running = std::make_unique<RunningWindow>(
        options.isPlain ? RunningWindow::PlaceOfSession() : RunningWindow::Place(), disk);
    const RunningWindow::Outcome start = running->Start({options.path, activation});
    if (start == RunningWindow::Outcome::HandedOver)
      return Tell(stdout, "kestrin: the window that is open already takes it from here.\n", kDone);
    const End end = Run(application, options, disk, *running, start);
    // They must not meet the window that has ended.
    running.reset();
    if (start == RunningWindow::Outcome::First) StartFor(end.unopened);
    return end.code;
  } catch (const std::exception& error) {
    return Tell(stderr, QString("kestrin: %1\n").arg(error.what()), kFailed);
  }
}
