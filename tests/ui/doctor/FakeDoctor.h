// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "core/doctor/Diagnosis.h"
#include "ui/doctor/DoctorMeans.h"

namespace kestrin::support {

/// Lets a thread wait until the test lets it go on.
class Barrier {
 public:
  void Hold() {
    const std::lock_guard lock(m_mutex);
    m_isHeld = true;
  }
  void Release() {
    {
      const std::lock_guard lock(m_mutex);
      m_isHeld = false;
    }
    m_changed.notify_all();
  }
  /// Waits while it is held.
  void Pass() {
    std::unique_lock lock(m_mutex);
    ++m_inside;
    m_most = std::max(m_most, m_inside);
    m_changed.wait(lock, [this] { return !m_isHeld; });
    --m_inside;
    ++m_passed;
  }
  /// How many have come, and how many of them are through.
  [[nodiscard]] int Come() const {
    const std::lock_guard lock(m_mutex);
    return m_inside + m_passed;
  }
  [[nodiscard]] int Passed() const {
    const std::lock_guard lock(m_mutex);
    return m_passed;
  }
  /// The most that were there at a time.
  [[nodiscard]] int Most() const {
    const std::lock_guard lock(m_mutex);
    return m_most;
  }

 private:
  mutable std::mutex m_mutex;
  std::condition_variable m_changed;
  bool m_isHeld = false;
  int m_inside = 0;
  int m_most = 0;
  int m_passed = 0;
};

/// Sees facts that are told apart by the number of the look.
class FakeSurvey final : public core::doctor::LinkSurvey {
 public:
  Barrier barrier;
  /// What the rule is like; changed only between two looks.
  std::string rulePath;

  [[nodiscard]] core::doctor::LinkFacts Look() override {
    core::doctor::LinkFacts facts;
    facts.rulePath = rulePath;
    facts.system = {"look " + std::to_string(barrier.Come() + 1)};
    barrier.Pass();
    return facts;
  }
};

class FakeRule final : public core::doctor::PermissionRule {
 public:
  static constexpr const char* kPath = "/etc/udev/rules.d/70-kestrin.rules";
  static constexpr const char* kContent = "KERNELS==\"0003:04D8:FA37.*\", TAG+=\"uaccess\"\n";

  Barrier barrier;
  bool canChange = true;
  core::base::Result<> result;
  /// Read once the barrier is passed.
  std::vector<std::string> calls;

  [[nodiscard]] bool CanChange() const override { return canChange; }
  [[nodiscard]] std::string Path() const override { return kPath; }
  [[nodiscard]] std::string Content() const override { return kContent; }
  core::base::Result<> Install() override { return Call("install"); }
  core::base::Result<> Remove() override { return Call("remove"); }

 private:
  core::base::Result<> Call(const char* what) {
    calls.emplace_back(what);
    barrier.Pass();
    return result;
  }
};

/// A diagnosis in which the questions before `question` are well, that one has this problem, and the others wait.
inline core::doctor::Diagnosis Problem(core::doctor::Question question, core::doctor::Remedy remedy,
                                       const std::string& text, const std::string& next) {
  using core::doctor::Verdict;
  core::doctor::Diagnosis diagnosis;
  for (std::size_t i = 0; i < diagnosis.findings.size(); ++i) {
    const auto each = static_cast<core::doctor::Question>(i);
    if (each < question) diagnosis.findings[i] = {each, Verdict::Ok, "It is well.", "", {}};
    if (each == question) diagnosis.findings[i] = {each, Verdict::Problem, text, next, remedy};
    if (each > question) diagnosis.findings[i] = {each, Verdict::Unknown, "It waits.", "", {}};
  }
  return diagnosis;
}

inline core::doctor::Diagnosis Healthy() {
  core::doctor::Diagnosis diagnosis;
  for (std::size_t i = 0; i < diagnosis.findings.size(); ++i)
    diagnosis.findings[i] = {static_cast<core::doctor::Question>(i), core::doctor::Verdict::Ok, "It is well.", "", {}};
  return diagnosis;
}

/// Linux does not let this person open the board.
inline core::doctor::Diagnosis NotPermitted() {
  return Problem(core::doctor::Question::Permitted, core::doctor::Remedy::InstallRule, "The rule is not there yet.",
                 "Install the rule that comes with the program.");
}

inline core::doctor::Diagnosis NoBoard() {
  return Problem(core::doctor::Question::Present, core::doctor::Remedy::PlugIn, "No board was found on USB.",
                 "Plug the board in.");
}

inline core::doctor::Diagnosis Hung() {
  return Problem(core::doctor::Question::Answers, core::doctor::Remedy::PlugInAgain,
                 "It does not take what it is asked.", "Unplug the board and plug it in again.");
}

/// A doctor who finds what the test says and notes what it is asked.
struct FakeDoctor {
  FakeSurvey survey;
  std::shared_ptr<FakeRule> rule = std::make_shared<FakeRule>();
  core::doctor::Diagnosis diagnosis = NoBoard();
  /// What was judged: the look, and whether a board's answers were there.
  std::vector<std::string> judged;
  /// How often a board was asked.
  int interviews = 0;
  /// Called while it is asked.
  std::function<void(const std::function<bool()>& goOn)> whileAsking;

  ui::doctor::DoctorMeans means{
      survey,
      rule,
      [](core::doctor::LinkFacts& facts) { facts.system.front().insert(0, "completed "); },
      [this](const core::doctor::LinkFacts& facts, const std::optional<core::doctor::Answers>& answers) {
        judged.push_back(facts.system.front() + (answers ? ", asked" : ""));
        return diagnosis;
      },
      [this](core::device::TLS&, const std::function<bool()>& goOn) {
        ++interviews;
        if (whileAsking) whileAsking(goOn);
        core::doctor::Answers answers;
        answers.answered = true;
        return answers;
      },
      [](const core::doctor::LinkFacts& facts, const std::optional<core::doctor::Answers>& answers,
         const core::doctor::Diagnosis& found, bool withSerialNumber) {
        return facts.system.front() + (answers ? ", asked" : ", not asked") + (found.IsHealthy() ? ", well" : ", ill") +
               (withSerialNumber ? ", 4B535401" : "");
      }};
};

}  // namespace kestrin::support
