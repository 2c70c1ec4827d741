#include "base/EmailAddress.h"

#include <gtest/gtest.h>

#include <string>

namespace tolvan {
namespace {

TEST(EmailAddress, TakesPlausibleOnesOnly) {
  for (const char* good :
       {"ana@example.com", "a.b+c_d-e@sub.example.co", "x@1.do", "root@localhost", "ñ@compañía.do"}) {
    EXPECT_TRUE(IsEmailAddress(good)) << good;
  }
  for (const char* bad : {"",
                          "ana",
                          "@example.com",
                          "ana@",
                          "ana@example",
                          "ana@@example.com",
                          "a@b@example.com",
                          ".a@example.com",
                          "a.@example.com",
                          "a..b@example.com",
                          "a@-b.com",
                          "a@b-.com",
                          "a@.com",
                          "a@b.com.",
                          "a b@c.com",
                          " a@b.com",
                          "a@b.com ",
                          "a\t@b.com",
                          "a@b.com\r\nBcc: c@d.com",
                          "<a@b.com>",
                          "\"a\"@b.com",
                          "a,b@c.com",
                          "a@b_c.com",
                          "a\xC2\xA0@b.com",
                          "\xFF@b.com"}) {
    EXPECT_FALSE(IsEmailAddress(bad)) << bad;
  }
  const std::string label(60, 'd');
  const std::string domain = label + "." + label + "." + label + ".com";  // 186 characters
  EXPECT_TRUE(IsEmailAddress(std::string(64, 'a') + "@" + domain));
  EXPECT_FALSE(IsEmailAddress(std::string(65, 'a') + "@" + domain));
  EXPECT_FALSE(IsEmailAddress(std::string(60, 'a') + "@" + label + "." + domain));
}

}  // namespace
}  // namespace tolvan
