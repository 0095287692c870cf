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
                                 "my_host-2", "[::1]", "[::1]:80", "[fe80::1:2.3.4.5]", "http://h", "https://h",
                                 "https://h:8443", "HTTPS://h", "https://[::1]:443", "http", "https", "https:1"})
    EXPECT_TRUE(UpdateServer::IsValid(good)) << good;
  for (const char* const bad : {"",           ":80",        "h:",           "h:0",           "h:65536",
                                "h:99999999", "h:8o",       "h:-1",         "h:80:80",       "https://",
                                "https:///",  "https://h/", "https://h/x",  "https://h:0",   "https:/h",
                                "https//h",   " https://h", "https:// h",   "https://u:p@h", "https://https://h",
                                "ftp://h",    "file:///h",  "https://:443", "httpss://h",    "h/x",
                                "h x",        " h",         "h ",           "h\r\nX:1",      "u@h",
                                "h?x",        "[]",         "[::1",         "[h]",           "::1",
                                "[::1]80",    "[::1]:",     "h\n",          "[1]",           "gr\xC3\xBC.example"})
    EXPECT_FALSE(UpdateServer::IsValid(bad)) << bad;
}

TEST(UpdateServerTest, TellsTheKindOfConnectionFromTheHost) {
  struct Row {
    const char* server;
    bool encrypted;
    const char* host;
  };
  for (const Row& row :
       {Row{"h", false, "h"}, Row{"h:1", false, "h:1"}, Row{"http://h:1", false, "h:1"}, Row{"hTTp://H", false, "H"},
        Row{"https://h", true, "h"}, Row{"HTTPS://h:8443", true, "h:8443"}, Row{"https://[::1]:1", true, "[::1]:1"},
        // Hosts of these names.
        Row{"https", false, "https"}, Row{"https:443", false, "https:443"}}) {
    EXPECT_TRUE(UpdateServer::IsValid(row.server)) << row.server;
    EXPECT_EQ(UpdateServer::IsEncrypted(row.server), row.encrypted) << row.server;
    EXPECT_EQ(UpdateServer::Host(row.server), row.host) << row.server;
  }
}

}  // namespace
}  // namespace kestrin::core::update
