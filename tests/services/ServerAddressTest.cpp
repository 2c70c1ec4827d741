#include "services/ServerAddress.h"

#include <gtest/gtest.h>

namespace tolvan {
namespace {

TEST(ServerAddress, IsAHostWithOrWithoutAPort) {
  struct Case {
    const char* text;
    const char* host;
    int port;
  };
  const Case cases[] = {{"dgii.test", "dgii.test", 80},
                        {"dgii.test:8080", "dgii.test", 8080},
                        {"[::1]:8080", "[::1]", 8080},
                        {"[::1]", "[::1]", 80},
                        {"127.0.0.1:1", "127.0.0.1", 1}};
  for (const Case& one : cases) {
    const auto address = ServerAddress::Parse(one.text);
    ASSERT_TRUE(address) << one.text;
    EXPECT_EQ(address->host, one.host);
    EXPECT_EQ(address->port, one.port);
  }
  for (const char* text :
       {"", "dgii.test:", "dgii.test:0", "dgii.test:65536", "http://dgii.test", "[::1", "[::1]8080", ":80"}) {
    EXPECT_FALSE(ServerAddress::Parse(text)) << text;
  }
}

}  // namespace
}  // namespace tolvan
