// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "core/update/TransferControl.h"

namespace kestrin::support {

/// A transfer control whose answers the test chooses. It fails the test when it is used in a way that the port does not
/// permit, or asked for something that the test did not set up.
class ScriptedTransfer final : public core::update::TransferControl {
 public:
  struct Request {
    std::string url;
    std::string method;
    std::string body;
    std::string headers;
    /// What was demanded before it.
    std::int64_t bytesAMinute = 0;
  };
  struct Answer {
    std::string body;
    int status = 200;
    std::map<std::string, std::string> headers = {};
    /// How often StillExecuting() is true before the answer is here.
    int polls = 1;
    /// Told at the first of these polls.
    std::optional<int> noticeWhileExecuting = {};
    /// Told at the moment in which the answer is here.
    std::optional<int> noticeWithAnswer = {};
    /// The body breaks off behind that many bytes, with this notice.
    std::optional<std::size_t> breakAt = {};
    int breakNotice = kError;
    /// Execute() fails or throws.
    bool refused = false;
    bool throwsAtStart = false;
  };

  /// A file's or text's answer, with its length.
  static Answer Whole(const std::string& body) {
    return {body, 200, {{"Content-Length", std::to_string(body.size())}}};
  }

  /// Answers in the order of the requests; when there are none left, `respond` answers.
  std::deque<Answer> answers;
  std::function<Answer(const Request&)> respond;
  std::vector<Request> requests;
  int cancels = 0;
  /// From that request on (1 is the first) nothing gets through any more.
  std::optional<std::size_t> failFromRequest;
  /// So many bytes of answers get through, then nothing more.
  std::optional<std::size_t> bytesLeft;
  int failNotice = kError;
  /// Called with the number of bytes given out so far, before a chunk is returned.
  std::function<void(std::size_t)> onChunk;
  std::size_t bytesGiven = 0;

  ~ScriptedTransfer() override { EXPECT_TRUE(answers.empty()) << answers.size() << " answers were not asked for"; }

  [[nodiscard]] std::vector<std::string> Bodies() const {
    std::vector<std::string> bodies;
    for (const Request& request : requests) bodies.push_back(request.body);
    return bodies;
  }

  /// Tells of a state.
  void Tell(int state) {
    if (m_callback) m_callback(state);
  }

  /// What kept requests from being encrypted.
  std::string trouble;

  [[nodiscard]] std::string Trouble() const override { return trouble; }
  void OnStateChanged(StateChanged callback) override { m_callback = std::move(callback); }

  void Demand(std::int64_t bytesAMinute) override { m_demand = bytesAMinute; }

  bool Execute(const std::string& url, const std::string& method, const std::string& body,
               const std::string& headers) override {
    EXPECT_EQ(m_phase, Phase::Idle) << "a request was left running";
    requests.push_back({url, method, body, headers, m_demand});
    if (!answers.empty()) {
      m_answer = answers.front();
      answers.pop_front();
    } else if (respond) {
      m_answer = respond(requests.back());
    } else {
      ADD_FAILURE() << "no answer is set up for " << body;
      m_answer = {"", 500, {}};
    }
    if (failFromRequest && requests.size() >= *failFromRequest) m_answer.noticeWhileExecuting = failNotice;
    m_given = 0;
    if (m_answer.throwsAtStart) throw std::runtime_error("the transfer control is broken");
    if (!m_answer.refused) m_phase = Phase::Executing;
    return !m_answer.refused;
  }

  bool StillExecuting() override {
    EXPECT_NE(m_phase, Phase::Idle) << "nothing runs";
    if (m_answer.noticeWhileExecuting) {
      Tell(*m_answer.noticeWhileExecuting);
      return true;
    }
    if (m_answer.polls-- > 0) return true;
    m_phase = Phase::Answered;
    if (m_answer.noticeWithAnswer) Tell(*m_answer.noticeWithAnswer);
    return false;
  }

  void Cancel() override {
    ++cancels;
    m_phase = Phase::Idle;
  }

  [[nodiscard]] int HttpStatus() const override { return m_phase == Phase::Answered ? m_answer.status : 0; }

  [[nodiscard]] std::string GetHeader(const std::string& name) const override {
    EXPECT_EQ(m_phase, Phase::Answered) << "there is no answer yet";
    const auto found = m_answer.headers.find(name);
    return found == m_answer.headers.end() ? "" : found->second;
  }

  std::string NextChunk(std::size_t most) override {
    EXPECT_EQ(m_phase, Phase::Answered) << "there is no answer to read";
    EXPECT_LE(most, 8192U);
    if (m_phase != Phase::Answered) return "";
    std::size_t end = m_answer.body.size();
    if (m_answer.breakAt) end = std::min(end, *m_answer.breakAt);
    if (bytesLeft) end = std::min(end, m_given + *bytesLeft);
    const std::string chunk = m_answer.body.substr(m_given, std::min(most, end - m_given));
    m_given += chunk.size();
    bytesGiven += chunk.size();
    if (bytesLeft) *bytesLeft -= chunk.size();
    if (chunk.empty()) {
      if (end < m_answer.body.size()) Tell(m_answer.breakAt ? m_answer.breakNotice : failNotice);
      m_phase = Phase::Idle;
    } else if (onChunk) {
      onChunk(bytesGiven);
      // Somebody may have cancelled meanwhile.
      if (m_phase == Phase::Idle) return "";
    }
    return chunk;
  }

 private:
  enum class Phase { Idle, Executing, Answered };

  StateChanged m_callback;
  Answer m_answer;
  std::int64_t m_demand = 0;
  Phase m_phase = Phase::Idle;
  std::size_t m_given = 0;
};

}  // namespace kestrin::support
