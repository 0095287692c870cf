// SPDX-License-Identifier: MIT
#include "core/update/UpdateServer.h"

#include <gtest/gtest.h>

namespace kestrin::core::update {
namespace {

TEST(UpdateServerTest, TheOptionComesBeforeTheEnvironmentAndThatBeforeTheBuild) {
  EXPECT_EQ(UpdateServer::Choose("a:1", "b:2"), "a:1");
  EXPECT_EQ(UpdateServer::Choose("", "b:2"), "b:2");
  EXPECT_EQ(UpdateServer::Choose("", ""), UpdateServer::Choose("", nullptr));
  EXPECT_TRUE(UpdateServer::IsValid(UpdateServer::Choose("", nullptr)));
}

TEST(UpdateServerTest, TellsServersFromOtherTexts) {
  for (const char* const good : {"update.kestrin.example", "localhost", "127.0.0.1", "127.0.0.1:8080", "h:1", "h:65535",
                                 "my_host-2", "[::1]", "[::1]:80", "[fe80::1:2.3.4.5]"})
    EXPECT_TRUE(UpdateServer::IsValid(good)) << good;
  for (const char* const bad : {"",         ":80",
                                "h:",       "h:0",
                                "h:65536",  "h:99999999",
                                "h:8o",     "h:-1",
                                "h:80:80",  "http://h",
                                "h/x",      "h x",
                                " h",       "h ",
                                "h\r\nX:1", "u@h",
                                "h?x",      "[]",
                                "[::1",     "[h]",
                                "::1",      "[::1]80",
                                "[::1]:",   "h\n",
                                "[1]",      "gr\xC3\xBC.example"})
    EXPECT_FALSE(UpdateServer::IsValid(bad)) << bad;
}

}  // namespace
}  // namespace kestrin::core::update
