// SPDX-License-Identifier: MIT
#include "platform/net/EncryptionTrouble.h"

#include <gmock/gmock.h>

namespace kestrin::platform::net {
namespace {

using testing::AllOf;
using testing::HasSubstr;

TEST(EncryptionTroubleTest, SaysWhatIsWrongAndWhatToDo) {
  for (const CURLcode result : {CURLE_PEER_FAILED_VERIFICATION, CURLE_SSL_ISSUER_ERROR})
    EXPECT_EQ(EncryptionTrouble(result, "it has expired", ""),
              "Nothing was fetched: the server's certificate does not prove who it is (it has expired). Check the "
              "server's address and this computer's date. If both are right, tell whoever runs the server.");
  for (const CURLcode result : {CURLE_SSL_CONNECT_ERROR, CURLE_SSL_CIPHER})
    EXPECT_EQ(EncryptionTrouble(result, "", ""),
              "Nothing was fetched: no encrypted connection to the server comes about. Check its address and port: a "
              "server without encryption is named without https://.");
  EXPECT_THAT(EncryptionTrouble(CURLE_SSL_CACERT_BADFILE, "", "/my ca.pem"),
              AllOf(HasSubstr("\"/my ca.pem\" holds no certificates"), HasSubstr("KESTRIN_CA_FILE")));
  EXPECT_THAT(EncryptionTrouble(CURLE_SSL_CACERT_BADFILE, "", ""), HasSubstr("this computer's list of certificates"));
}

TEST(EncryptionTroubleTest, SaysNothingOfOtherFailures) {
  for (const CURLcode result : {CURLE_OK, CURLE_COULDNT_CONNECT, CURLE_COULDNT_RESOLVE_HOST, CURLE_OPERATION_TIMEDOUT,
                                CURLE_RECV_ERROR, CURLE_GOT_NOTHING, CURLE_PARTIAL_FILE, CURLE_WRITE_ERROR})
    EXPECT_EQ(EncryptionTrouble(result, "words", "file"), "") << result;
}

TEST(EncryptionTroubleTest, ShowsNoControlCharacters) {
  EXPECT_THAT(EncryptionTrouble(CURLE_SSL_CONNECT_ERROR, "a\r\nb\x1B[2Jc\xC3\xA4", ""),
              HasSubstr("(a  b [2Jc\xC3\xA4)"));
}

}  // namespace
}  // namespace kestrin::platform::net
