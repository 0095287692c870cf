// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <future>
#include <thread>

#include "FontsFixture.h"
#include "core/base/PathText.h"
#include "support/ScriptedServer.h"
#include "support/SoundSet.h"

namespace kestrin::support {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr const char* kUpdated = "Update finished. New fonts installed successfully.";
constexpr const char* kNothing = "Update process finished. No updates available or required.";

class FontsTest : public FontsFixture {};

TEST_F(FontsTest, AnUpdateFetchesWhatIsOfferedAndTheNextOneNothing) {
  fs::create_directories(m_offered / "Ember");
  const SoundSet set = WriteSoundSet(m_offered / "Ember");
  OfferFont("Zinc and Co");
  const Server server = Serve();
  EXPECT_THAT(server.address, testing::StartsWith("127.0.0.1:"));
  Json result = RunJson(0, Update(server.address));
  EXPECT_THAT(Keys(result), ElementsAre("outcome", "message", "installed"));
  EXPECT_EQ(result["outcome"], "updated");
  EXPECT_EQ(result["message"], kUpdated);
  EXPECT_EQ(result["installed"], Json::array({"Ember", "Zinc and Co"}));
  for (const SoundSet::Sound& sound : set.sounds)
    EXPECT_EQ(ReadBytes(m_store / "Ember" / sound.path.filename()), ReadBytes(sound.path)) << sound.path;
  EXPECT_EQ(ReadBytes(m_store / "Zinc and Co" / "descriptor"), "BOOT\r\none.lsu\r\n 70\r\nPWRON\r\ntwo.lsu\r\n 70\r\n");

  result = RunJson(0, Update(server.address));
  EXPECT_EQ(result["outcome"], "nothing");
  EXPECT_EQ(result["message"], kNothing);
  EXPECT_EQ(result["installed"], Json::array());

  // The font opens as the set that it is.
  const Json shown = RunJson(0, {"config", "show", core::base::TextOf(m_store / "Ember" / "Ember.lscfg")});
  EXPECT_EQ(shown["totalSamples"], set.Samples());
  EXPECT_EQ(shown["slots"]["boot"]["path"], core::base::TextOf(m_store / "Ember" / set.sounds[0].path.filename()));
}

TEST_F(FontsTest, ASingleFontIsFetchedToo) {
  OfferFont("Only");
  const Server server = Serve();
  EXPECT_EQ(RunJson(0, Update(server.address))["installed"], Json::array({"Only"}));
  EXPECT_EQ(RunJson(0, Update(server.address))["outcome"], "nothing");
  EXPECT_EQ(Listed().size(), 1U);
}

TEST_F(FontsTest, WithoutJsonTheStepsAndTheEndAreTold) {
  OfferFont("Only");
  const Server server = Serve();
  const Finished finished = Run(Update(server.address));
  EXPECT_EQ(finished.code, 0);
  EXPECT_EQ(finished.out,
            "(1/3) Checking for updates\nRetrieving item catalogue\n(2/3) Validating catalogue items\n"
            "Checking item: Only\n(3/3) Updating item: Only\nDownloading: one.lsu\nDownloading: two.lsu\n"
            "Installed: Only\n" +
                std::string(kUpdated) + "\n");
  EXPECT_EQ(finished.errors, "");
}

TEST_F(FontsTest, TheListTellsWhatIsComplete) {
  EXPECT_EQ(Listed(), Json::array());
  EXPECT_THAT(Run({"--program-folder", core::base::TextOf(m_program), "fonts", "list"}).out,
              HasSubstr("No sound fonts yet"));
  fs::create_directories(m_store / "Half");
  WriteBytes(m_store / "Half" / "b.LSU", "x");
  WriteBytes(m_store / "Half" / "a.lsu", "x");
  WriteBytes(m_store / "Half" / "tmp", "x");
  fs::create_directories(m_store / "Whole");
  WriteBytes(m_store / "Whole" / "fnt", "");
  const Json expected = Json::parse(
      R"([{"name":"Half","complete":false,"files":["a.lsu","b.LSU"]},{"name":"Whole","complete":true,"files":[]}])");
  EXPECT_EQ(Listed(), expected);
}

/// Answers like a server of one font of two sounds, up to half of the second sound; there `atHalf` decides.
ScriptedServer::Script HalfAFont(std::atomic<int>& requests, const ScriptedServer::Script& atHalf) {
  return [&requests, atHalf](ScriptedServer::Connection& client) {
    const auto answer = [](const std::string& body, std::size_t sent) {
      return "HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body.substr(0, sent);
    };
    const std::string whole[] = {"status:OK\r\nclientv:1\r\nOnly\r\n",
                                 "status:OK\r\nclientv:1\r\nBOOT\r\none.lsu\r\n 70\r\nPWRON\r\ntwo.lsu\r\n 70",
                                 std::string(20000, '1')};
    const auto number = static_cast<std::size_t>(requests++);
    if (number < std::size(whole)) {
      client.Send(answer(whole[number], whole[number].size()));
      client.AwaitClose();
      return;
    }
    client.Send(answer(std::string(30000, '2'), 15000));
    atHalf(client);
  };
}

TEST_F(FontsTest, AnUpdateWhoseServerDiesGoesOnWithWhatIsMissing) {
  OfferFont("Only");
  std::atomic<int> requests{0};
  const ScriptedServer dying(HalfAFont(requests, [](ScriptedServer::Connection& client) { client.Reset(); }));
  const Json failed = RunJson(1, Update(dying.Host()));
  EXPECT_EQ(failed["outcome"], "failed");
  EXPECT_EQ(failed["message"], "Failed! Connection error 0004.  Please try again later.");
  EXPECT_EQ(failed["installed"], Json::array());
  EXPECT_FALSE(fs::exists(m_store / "Only" / "tmp"));
  EXPECT_FALSE(fs::exists(m_store / "Only" / "two.lsu"));
  EXPECT_EQ(Listed()[0]["complete"], false);

  const Server server = Serve();
  EXPECT_EQ(RunJson(0, Update(server.address))["outcome"], "updated");
  const auto resumed = Tree(m_store);
  const Finished stopped = Stop(server);
  EXPECT_EQ(stopped.code, 130);
  EXPECT_THAT(stopped.out, HasSubstr("\nOnly: two.lsu\n"));
  EXPECT_THAT(stopped.out, Not(HasSubstr("one.lsu")));
  EXPECT_EQ(stopped.errors, "");

  // As if nothing had happened.
  fs::remove_all(m_store);
  const Server again = Serve();
  EXPECT_EQ(RunJson(0, Update(again.address))["outcome"], "updated");
  EXPECT_EQ(Tree(m_store), resumed);
}

TEST_F(FontsTest, CtrlCStopsAnUpdateWhichKeepsWhatItHas) {
  OfferFont("Only");
  std::atomic<int> requests{0};
  const ScriptedServer stalling(HalfAFont(requests, [](ScriptedServer::Connection& client) { client.AwaitClose(); }));
  const auto update = Start(Update(stalling.Host()));
  update->WaitForOutput("Downloading: two.lsu\n");
  update->Signal(SIGINT);
  const Finished finished = update->Wait();
  EXPECT_EQ(finished.code, 130);
  EXPECT_THAT(finished.errors, HasSubstr("Stopped. What was fetched is kept"));
  EXPECT_EQ(ReadBytes(m_store / "Only" / "one.lsu"), std::string(20000, '1'));
  EXPECT_FALSE(fs::exists(m_store / "Only" / "two.lsu"));
  EXPECT_FALSE(fs::exists(m_store / "Only" / "fnt"));
}

TEST_F(FontsTest, TheServersChoiceIsOptionThenEnvironment) {
  OfferFont("Only");
  const Server server = Serve();
  m_environment.push_back("KESTRIN_UPDATE_SERVER=" + server.address);
  const Arguments board{"--board", "sim", "--program-folder", core::base::TextOf(m_program), "fonts", "update"};
  EXPECT_EQ(RunJson(0, board)["outcome"], "updated");
  // Nobody listens there.
  const Json failed = RunJson(1, Update("127.0.0.1:1"));
  EXPECT_EQ(failed["message"], "Failed! Connection error 0002.  Please try again later.");
  m_environment.back() = "KESTRIN_UPDATE_SERVER=no such/server";
  EXPECT_THAT(RunJson(2, board)["error"], HasSubstr("HOST or HOST:PORT"));
}

TEST_F(FontsTest, AHalfSerialNumberIsAskedForAgainAndNeverToldToTheServer) {
  ScriptedServer server([](ScriptedServer::Connection& client) {
    client.Send("HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\nno");
    client.AwaitClose();
  });
  Arguments update = Update(server.Host());
  update[1] = "sim:fault=read:3,fault=read:5";
  EXPECT_EQ(RunJson(1, update)["error"],
            "The board did not tell its whole serial number. Unplug it, plug it in again and repeat this.");
  EXPECT_THAT(server.Requests(), IsEmpty());
  update[1] = "sim:fault=read:3";
  static_cast<void>(RunJson(1, update));
  ASSERT_EQ(server.Requests().size(), 1U);
  EXPECT_THAT(server.Requests()[0], testing::EndsWith("did=4B535401"));
}

TEST_F(FontsTest, TheServerIsToldTheBoardsSerialNumber) {
  ScriptedServer server([](ScriptedServer::Connection& client) {
    client.Send("HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\nno");
    client.AwaitClose();
  });
  EXPECT_EQ(RunJson(1, Update(server.Host()))["message"],
            "Update failed! The server refused the request. Please try again later.");
  ASSERT_EQ(server.Requests().size(), 1U);
  EXPECT_THAT(server.Requests()[0], testing::EndsWith("\r\n\r\nsvc=gct&did=4B535499"));
}

TEST_F(FontsTest, AListMakesNothing) {
  EXPECT_EQ(Listed(), Json::array());
  EXPECT_TRUE(fs::is_empty(m_program));
  // Without a folder that is named there are two places, one of which is the person's own.
  EXPECT_EQ(RunJson(0, {"fonts", "list"})["fonts"], Json::array());
  EXPECT_FALSE(fs::exists(m_data));
  fs::create_directories(m_data / "kestrin" / "fonts" / "Mine");
  const Json mine = Json::parse(R"([{"name":"Mine","complete":false,"files":[]}])");
  EXPECT_EQ(RunJson(0, {"fonts", "list"})["fonts"], mine);
  EXPECT_TRUE(fs::is_empty(m_data / "kestrin" / "fonts" / "Mine"));
}

TEST_F(FontsTest, AnLedDriverGetsNoFonts) {
  OfferFont("Only");
  ScriptedServer server([](ScriptedServer::Connection& client) { client.AwaitClose(); });
  Arguments update = Update(server.Host());
  update[1] = "sim:id=1000";
  EXPECT_THAT(RunJson(1, update)["error"], HasSubstr("This board is an LED driver"));
  EXPECT_THAT(server.Requests(), IsEmpty());
  EXPECT_TRUE(fs::is_empty(m_program)) << "nor is a folder made for them";
}

TEST_F(FontsTest, ANameThatNoComputerCanStoreLeavesOneFontOut) {
  OfferFont("Only");
  OfferFont("A&ffd=B");
  OfferFont("What?");
  const Server server = Serve({"--quiet"});
  EXPECT_EQ(RunJson(0, Update(server.address))["installed"], Json::array({"Only"}));
  const Finished stopped = Stop(server);
  EXPECT_THAT(stopped.errors, HasSubstr("kestrinctl: left out: A&ffd=B: this is no name that every computer takes."));
  EXPECT_THAT(stopped.errors, HasSubstr("kestrinctl: left out: What?: "));
  EXPECT_EQ(stopped.out, server.address + "\n");

  std::atomic<int> requests{0};
  // A server that does not look so closely.
  ScriptedServer other([&](ScriptedServer::Connection& client) {
    const std::string answers[] = {"status:OK\r\nclientv:1\r\nOnly\r\nWhat?\r\nNew", "status:OK\r\nclientv:1\r\nBOOT"};
    const std::string& body = answers[requests++];
    client.Send("HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body);
    client.AwaitClose();
  });
  const Json result = RunJson(0, Update(other.Host()));
  EXPECT_EQ(result["installed"], Json::array({"New"}));
  EXPECT_THAT(result["message"],
              HasSubstr("1 font was left out, because not every computer can store its names: \"What?\""));
}

TEST_F(FontsTest, WithoutABoardNothingIsAsked) {
  const Finished finished = Run({"--board", "hid:/nowhere", "fonts", "update", "--server", "127.0.0.1:1"});
  EXPECT_EQ(finished.code, 3);
  EXPECT_THAT(finished.errors, Not(HasSubstr("0002")));
}

TEST_F(FontsTest, AServerSaysWhatItOffersAndWhatItLeavesOut) {
  OfferFont("Only");
  fs::create_directories(m_offered / "Empty");
  const Server server = Serve();
  server.process->WaitForOutput("On offer: Only\n");
  const Finished stopped = Stop(server);
  EXPECT_EQ(stopped.out, server.address + "\nOn offer: Only\n");
  EXPECT_THAT(stopped.errors, HasSubstr("kestrinctl: left out: Empty: "));
}

/// Connects to the port again and again, counting, until nobody listens there any more; false when somebody still does
/// after a minute.
bool ConnectUntilRefused(const std::string& port, std::atomic<int>& connections) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(static_cast<std::uint16_t>(std::stoi(port)));
  const auto until = std::chrono::steady_clock::now() + std::chrono::minutes(1);
  while (std::chrono::steady_clock::now() < until) {
    const int client = socket(AF_INET, SOCK_STREAM, 0);
    const bool connected = connect(client, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
    if (connected) {
      // The server ends a connection over which nothing is asked.
      shutdown(client, SHUT_WR);
      char nothing = 0;
      (void)recv(client, &nothing, 1, 0);
      ++connections;
    }
    close(client);
    if (!connected) return true;
  }
  return false;
}

TEST_F(FontsTest, CtrlCEndsAServerThatHasNoPause) {
  const Server server = Serve();
  const std::string port = server.address.substr(server.address.find(':') + 1);
  std::atomic<int> connections{0};
  auto refused = std::async(std::launch::async, [&] { return ConnectUntilRefused(port, connections); });
  while (connections < 20) std::this_thread::yield();
  EXPECT_EQ(Stop(server).code, 130);
  EXPECT_TRUE(refused.get());
}

TEST_F(FontsTest, WithJsonAServerPrintsItsAddressAndNothingElse) {
  OfferFont("Only");
  const Server server = Serve({"--json"});
  const Finished stopped = Stop(server);
  EXPECT_EQ(stopped.code, 130);
  EXPECT_EQ(stopped.out, server.address + "\n");
  EXPECT_EQ(stopped.errors, "");
}

TEST_F(FontsTest, AServerThatCannotStartSaysWhy) {
  EXPECT_THAT(Run({"fonts", "serve", core::base::TextOf(m_folder / "nothing")}).errors, HasSubstr("is no folder"));
  const Server server = Serve();
  const std::string port = server.address.substr(server.address.find(':') + 1);
  const Finished second = Run({"fonts", "serve", core::base::TextOf(m_offered), "--port", port});
  EXPECT_EQ(second.code, 1);
  EXPECT_EQ(second.out, "");
  EXPECT_THAT(second.errors, HasSubstr(server.address + " cannot be used"));
  EXPECT_EQ(Run({"fonts", "serve", core::base::TextOf(m_offered), "--port", "65536"}).code, 2);
  EXPECT_EQ(Run({"fonts", "serve", core::base::TextOf(m_offered), "--address", "no address"}).code, 1);
}

TEST_F(FontsTest, APackedSetIsAFontToo) {
  const std::filesystem::path swing = WriteSoundFile(m_folder / "swing.lsu", SomeSamples(3000));
  const std::string set = (m_folder / "any name.lscfg").string();
  ASSERT_EQ(Run({"config", "make", set, "--boot", swing.string() + ":40", "--motion", swing.string()}).code, 0);
  ASSERT_EQ(Run({"config", "pack", set, "--output", (m_offered / "Frost.zip").string()}).code, 0);
  WriteBytes(m_offered / "Broken.zip", "PK no more");
  const Server server = Serve();
  EXPECT_EQ(Run(Update(server.address)).code, 0);
  const Finished served = Stop(server);
  EXPECT_NE(served.out.find("On offer: Frost"), std::string::npos) << served.out;
  EXPECT_NE(served.errors.find("left out: Broken: "), std::string::npos) << served.errors;
  EXPECT_EQ(ReadBytes(m_store / "Frost" / "swing.lsu"), ReadBytes(swing));
  const Json shown = RunJson(0, {"config", "show", (m_store / "Frost" / "Frost.lscfg").string()});
  EXPECT_EQ(shown["slots"]["boot"]["volume"], 40);
  EXPECT_EQ(shown["slots"]["motion"][0]["path"], (m_store / "Frost" / "swing.lsu").string());
}

}  // namespace
}  // namespace kestrin::support
