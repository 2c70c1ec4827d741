#include "network/CurlServices.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

#include "contract/TemporaryFolder.h"
#include "host/HostError.h"
#include "support/FakeHost.h"
#include "support/FileContent.h"
#include "support/LoopbackServer.h"
#include "support/ThrownBy.h"

namespace tolvan {
namespace {

using testing::HasSubstr;

class CurlHttpClientTest : public testing::Test {
 protected:
  HttpResponse Get(const std::string& pathAndQuery, const Interruption& user = test::FakeInterruption()) {
    HttpRequest request;
    request.host = "127.0.0.1";
    request.port = static_cast<std::uint16_t>(server_.Port());
    request.pathAndQuery = pathAndQuery;
    request.totalTimeout = std::chrono::milliseconds(4000);
    request.maximumBody = 250'000;
    return CurlHttpClient(user).Get(request);
  }

  test::TemporaryFolder folder_;
  test::LoopbackServer server_{"answer_server.py", {folder_.Path()}};
  test::FakeInterruption interruption_;
};

TEST_F(CurlHttpClientTest, TellsCompleteAnswersFromOthers) {
  const struct {
    const char* path;
    bool succeeded;
    const char* status;
    std::string body;
    const char* failure;
  } cases[] = {
      {"ok", true, "200", std::string("hola\0", 5), ""},
      {"chunked", true, "200", "unodos", ""},
      {"missing", true, "404", "no", ""},
      {"moved", true, "302", "", ""},
      {"short", false, "200", "hola", "incompleta"},
      {"cutchunk", false, "200", "uno", "incompleta"},
      {"noise", false, "", "", "no se entiende"},
      {"nothing", false, "", "", "sin responder"},
      {"slow", false, "", "", "no respondió a tiempo"},
  };
  for (const auto& one : cases) {
    const HttpResponse response = Get(one.path);
    EXPECT_EQ(response.succeeded, one.succeeded) << one.path << ": " << response.failure;
    EXPECT_EQ(response.statusText, one.status) << one.path;
    EXPECT_EQ(response.body, one.body) << one.path;
    EXPECT_THAT(response.failure, HasSubstr(one.failure)) << one.path;
    EXPECT_EQ(response.failure.empty(), one.succeeded) << one.path;
  }
}

TEST_F(CurlHttpClientTest, LimitsTheAnswer) {
  const HttpResponse response = Get("large");
  EXPECT_FALSE(response.succeeded);
  EXPECT_THAT(response.failure, HasSubstr("250000 bytes"));
  EXPECT_LE(response.body.size(), 250'000U);
}

TEST_F(CurlHttpClientTest, SendsThePathAsItStands) {
  ::setenv("http_proxy", "http://127.0.0.1:9", 1);
  for (const char* path : {"ok?a+b%20%zz&&=#x", "ok?a/../b/./c//d", "ok/../x?{1}[2]|^`", "ok?\xF1\xC3\xB1\"'<>\\"}) {
    Get(path);
    EXPECT_THAT(test::ReadFile(folder_.File("request")),
                testing::StartsWith("GET /" + std::string(path) + " HTTP/1.1\r\n"));
  }
  std::filesystem::remove(folder_.File("request"));
  for (const char* path : {"ok HTTP/1.1\r\nX: y", "ok\n", "ok\t"}) EXPECT_NE(Get(path).failure, "") << path;
  EXPECT_FALSE(std::filesystem::exists(folder_.File("request")));
}

TEST_F(CurlHttpClientTest, FailsClearlyWithoutAServer) {
  for (const char* host : {"", "a b", "http://x", "x:80", "x/y", "ana@x", "x\r\n"}) {
    HttpRequest request;
    request.host = host;
    EXPECT_THAT(CurlHttpClient(interruption_).Get(request).failure, HasSubstr("no es un servidor")) << host;
  }
  HttpRequest request;
  request.host = "::1";
  request.port = test::unusedPort;
  EXPECT_NE(CurlHttpClient(interruption_).Get(request).failure, "");
  const test::ImpatientUser user;
  EXPECT_EQ(test::KindThrownBy([&] { Get("slow", user); }), HostErrorKind::Interrupted);
  EXPECT_EQ(user.told, "El servidor 127.0.0.1 no ha respondido todavía; esperando… Ya.");
}

// A wish to stop that comes before the request: nobody is called.
TEST_F(CurlHttpClientTest, DoesNotConnectWhenStopped) {
  interruption_.requested = true;
  EXPECT_EQ(test::KindThrownBy([&] { Get("ok", interruption_); }), HostErrorKind::Interrupted);
  Get("missing");
  EXPECT_EQ(test::ReadFile(folder_.File("requests")), "GET /missing HTTP/1.1\n");
}

}  // namespace
}  // namespace tolvan
