// SPDX-License-Identifier: MIT
#include "core/update/FileSink.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "core/update/HttpRequest.h"
#include "support/ScriptedTransfer.h"

namespace kestrin::core::update {
namespace {

using base::Failure;
using base::FailureKind;
using base::Result;
using support::ScriptedTransfer;
using testing::ElementsAre;
using testing::IsEmpty;

/// What the request client does with a sink. No file is anywhere near.
class FileSinkTest : public testing::Test {
 protected:
  /// Notes its steps in the test, and fails at that step.
  class Sink final : public FileSink {
   public:
    explicit Sink(FileSinkTest& test) : m_test(test) {}
    Result<> Begin() override { return m_test.Note("begin"); }
    Result<> Take(std::string_view bytes) override { return m_test.Note("take " + std::to_string(bytes.size())); }
    Result<> Finish() override { return m_test.Note("finish"); }
    void Drop() override { static_cast<void>(m_test.Note("drop")); }

   private:
    FileSinkTest& m_test;
  };

  FileSinkTest() { request.Initialize(transfer); }

  Result<> Note(const std::string& step) {
    steps.push_back(step);
    if (throws && step == failing) throw std::runtime_error("out of luck");
    return step == failing ? Result<>(Failure{FailureKind::DiskFull, "no room"}) : Result<>();
  }
  void Fetch(const ScriptedTransfer::Answer& answer) {
    steps.clear();
    transfer.cancels = 0;
    transfer.answers.push_back(answer);
    EXPECT_EQ(request.requestData("q", "some/folder", "a.lsu"), "");
  }

  std::vector<std::string> steps;
  std::string failing;
  bool throws = false;
  ScriptedTransfer transfer;
  HttpRequest request{"fonts.example", [this](const std::filesystem::path& folder, const std::string& name) {
                        EXPECT_EQ(folder, "some/folder");
                        EXPECT_EQ(name, "a.lsu");
                        EXPECT_TRUE(transfer.answers.size() == 1) << "the request is out already";
                        return std::make_unique<Sink>(*this);
                      }};
};

TEST_F(FileSinkTest, TakesAFileInPieces) {
  Fetch(ScriptedTransfer::Whole(std::string(20000, 'x')));
  EXPECT_THAT(steps, ElementsAre("begin", "take 8192", "take 8192", "take 3616", "finish"));
  EXPECT_EQ(request.requestStatus(), 0);
  EXPECT_TRUE(request.fileResult());
}

TEST_F(FileSinkTest, AStepThatFailsIsTheLastOne) {
  struct Row {
    const char* failing;
    std::vector<std::string> steps;
  };
  const Row table[] = {{"begin", {"begin"}},
                       {"take 8192", {"begin", "take 8192"}},
                       {"take 3616", {"begin", "take 8192", "take 8192", "take 3616"}},
                       {"finish", {"begin", "take 8192", "take 8192", "take 3616", "finish"}}};
  for (const Row& row : table)
    for (const bool byThrowing : {false, true}) {
      failing = row.failing;
      throws = byThrowing;
      Fetch(ScriptedTransfer::Whole(std::string(20000, 'x')));
      EXPECT_EQ(steps, row.steps);
      EXPECT_EQ(request.requestStatus(), 3) << row.failing;
      EXPECT_EQ(request.fileResult().Why(),
                throws ? Failure({FailureKind::Failed, "out of luck"}) : Failure({FailureKind::DiskFull, "no room"}));
      EXPECT_EQ(transfer.cancels, throws ? 0 : 1) << row.failing;
      transfer.Cancel();
    }
  // The next one knows nothing of it.
  failing.clear();
  Fetch(ScriptedTransfer::Whole("x"));
  EXPECT_EQ(request.requestStatus(), 0);
  EXPECT_TRUE(request.fileResult());
}

TEST_F(FileSinkTest, WhatIsNotWholeIsDropped) {
  ScriptedTransfer::Answer broken = ScriptedTransfer::Whole(std::string(20000, 'x'));
  broken.breakAt = 8192;
  broken.breakNotice = ScriptedTransfer::kDisconnected;
  Fetch(broken);
  EXPECT_THAT(steps, ElementsAre("begin", "take 8192", "drop"));
  EXPECT_EQ(request.requestStatus(), 1);
  EXPECT_TRUE(request.fileResult()) << "that was not the sink's fault";

  Fetch({std::string(8192, 'x'), 200, {{"Content-Length", "8193"}}});
  EXPECT_THAT(steps, ElementsAre("begin", "take 8192", "drop"));
  EXPECT_EQ(request.requestStatus(), 1);

  Fetch({std::string(20000, 'x'), 200, {{"Content-Length", "16383"}}});
  EXPECT_THAT(steps, ElementsAre("begin", "take 8192", "drop"));
  EXPECT_EQ(request.requestStatus(), 2);
}

TEST_F(FileSinkTest, WhatIsRefusedDoesNotEvenBegin) {
  for (const ScriptedTransfer::Answer& answer :
       {ScriptedTransfer::Answer{"x"}, ScriptedTransfer::Answer{"x", 200, {{"Content-Length", "0"}}},
        ScriptedTransfer::Answer{"x", 200, {{"Content-Length", "67108865"}}},
        ScriptedTransfer::Answer{"x", 404, {{"Content-Length", "1"}}}}) {
    Fetch(answer);
    EXPECT_THAT(steps, IsEmpty());
    EXPECT_NE(request.requestStatus(), 0);
    EXPECT_TRUE(request.fileResult());
  }
}

}  // namespace
}  // namespace kestrin::core::update
