// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>
#include <cstdint>
#include <functional>
#include <optional>

#include "core/doctor/Diagnosis.h"
#include "core/doctor/Interview.h"
#include "core/doctor/LinkFacts.h"
#include "ui/doctor/DoctorMeans.h"
#include "ui/doctor/RuleWork.h"
#include "ui/kit/LatestJob.h"

namespace kestrin::ui::doctor {

class DoctorFrame;

/// Does what the sheet "Connection doctor" needs: looks again every second while it is open, on a thread of its own;
/// asks the board once, when nothing else talks to it; changes the permission rule when the person wants that.
class DoctorControl : public QObject {
  Q_OBJECT

 public:
  /// How often it looks while the sheet is open.
  static constexpr int kLookMilliseconds = 1000;

  /// A board that the session has open.
  struct Board {
    core::device::TLS& board;
    bool isOnline = false;
    /// It is left alone until it has finished.
    bool isErasing = false;
  };
  struct Around {
    const DoctorMeans& means;
    /// Looks up the session's board; nothing when there is none.
    std::function<std::optional<Board>()> board;
    /// Runs an action as soon as nothing else talks to the board, and keeps others away until it is done.
    std::function<void(std::function<void()>)> run;
  };

  /// The sheet must outlive the object.
  DoctorControl(DoctorFrame& frame, Around around, QObject* parent = nullptr);

  /// Opens the sheet and looks.
  void Open();
  /// The session's state has changed: looks again, and asks a board that has come. Does nothing while the sheet is
  /// closed.
  void Follow();
  /// The program ends: nothing is asked any more, and what is being asked stops.
  void Stop();

 private:
  /// Which board was asked, and whether it was online then.
  struct Asked {
    std::int32_t board = 0;
    bool isOnline = false;
    friend bool operator==(const Asked&, const Asked&) = default;
  };

  void Close();
  void Look();
  void Take(const core::doctor::LinkFacts& facts);
  void AskSoon();
  void Ask();
  void LookAgain();
  void Change(core::base::Result<> (core::doctor::PermissionRule::*change)());
  void Copy(bool withSerialNumber);
  void Judge();
  /// Forgets what a board has told that is not there any more.
  void ForgetOthers();
  [[nodiscard]] static std::optional<Asked> KeyOf(const std::optional<Board>& board);

  DoctorFrame& m_frame;
  Around m_around;
  QTimer m_timer;
  kit::LatestJob m_job;
  RuleWork m_ruleWork;
  bool m_isOpen = false;
  /// How often the sheet was opened: what was asked for an earlier opening stops.
  int m_opening = 0;
  bool m_isLooking = false;
  /// Something has changed since that look began.
  bool m_isLookStale = false;
  bool m_isAskDue = false;

  std::optional<core::doctor::LinkFacts> m_facts;
  std::optional<core::doctor::Answers> m_answers;
  std::optional<Asked> m_asked;
  core::doctor::Diagnosis m_diagnosis;
};

}  // namespace kestrin::ui::doctor
