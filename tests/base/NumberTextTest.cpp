// What people type for numbers, amounts and addresses, and what is shown to them.
#include "base/NumberText.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <tuple>

#include "base/Addresses.h"
#include "base/Text.h"

namespace tolvan {
namespace {

TEST(PlainNumberText, IsWhatAPersonWouldHaveTyped) {
  const std::vector<std::pair<double, std::string>> cases = {{0.1 + 0.2, "0.3"},
                                                             {-0.0, "0"},
                                                             {1e20, "100000000000000000000"},
                                                             {-1234.5, "-1234.5"},
                                                             {1e-7, "0.0000001"},
                                                             {1.25e-3, "0.00125"},
                                                             {123'456'789'012'345.0, "123456789012345"},
                                                             {1'234'567'890'123'456.0, "1234567890123460"},
                                                             {0.999'999'999'999'999'9, "1"},
                                                             {8'290'001'234'567.0, "8290001234567"},
                                                             {std::numeric_limits<double>::infinity(), ""},
                                                             {std::numeric_limits<double>::quiet_NaN(), ""}};
  for (const auto& [value, expected] : cases) EXPECT_EQ(PlainNumberText(value), expected) << value;
}

TEST(FormatMoney, ShowsAnAmountByThePatternOfTheHost) {
  // Amount, pattern, separator, text.
  const std::vector<std::array<const char*, 4>> cases{
      {"1234567.005", "#,##0.00", ",", "1,234,567.01"},
      {"-1234.5", "#,##0.00", ".", "-1.234,50"},
      {"999.995", "#,##0.00", ",", "1,000.00"},
      {"1234.5", "0.00##", ",", "1234.50"},
      {"1234.5678", "0.00##", ",", "1234.5678"},
      {"12.3", "0.##", ",", "12.3"},
      {"12", "0.##", ",", "12"},
      {"1234", "RD$ #,##0.0 netos", "'", "RD$ 1'234.0 netos"},
      {"-3", "RD$ 0", ",", "-RD$ 3"},
      {"922337203685477.5807", "#,##0.0000", ",", "922,337,203,685,477.5807"}};
  for (const auto& [amount, pattern, separator, text] : cases) {
    EXPECT_EQ(FormatMoney(Currency::Parse(amount).value(), pattern, separator), text) << pattern;
  }
}

TEST(EmailAddress, TakesPlausibleOnesOnly) {
  for (const std::string_view good :
       Split("ana@example.com|a.b+c_d-e@sub.example.co|x@1.do|root@localhost|ñ@compañía.do", '|')) {
    EXPECT_TRUE(IsEmailAddress(good)) << good;
  }
  constexpr std::string_view bad =
      "|ana|@example.com|ana@|ana@example|ana@@example.com|a@b@example.com|.a@example.com|a.@example.com|"
      "a..b@example.com|a@-b.com|a@b-.com|a@.com|a@b.com.|a b@c.com| a@b.com|a@b.com |a\t@b.com|"
      "a@b.com\r\nBcc: c@d.com|<a@b.com>|\"a\"@b.com|a,b@c.com|a@b_c.com|a\xC2\xA0@b.com|\xFF@b.com";
  for (const std::string_view text : Split(bad, '|')) EXPECT_FALSE(IsEmailAddress(text)) << text;
  const std::string label(60, 'd');
  const std::string domain = label + "." + label + "." + label + ".com";  // 186 characters
  EXPECT_TRUE(IsEmailAddress(std::string(64, 'a') + "@" + domain));
  EXPECT_FALSE(IsEmailAddress(std::string(65, 'a') + "@" + domain));
  EXPECT_FALSE(IsEmailAddress(std::string(60, 'a') + "@" + label + "." + domain));
}

TEST(ServerAddress, IsAHostWithOrWithoutAPort) {
  const std::vector<std::tuple<const char*, const char*, int>> cases{{"dgii.test", "dgii.test", 80},
                                                                     {"dgii.test:8080", "dgii.test", 8080},
                                                                     {"[::1]:8080", "[::1]", 8080},
                                                                     {"[fe80::1]", "[fe80::1]", 80},
                                                                     {"127.0.0.1:1", "127.0.0.1", 1}};
  for (const auto& [text, host, port] : cases) {
    const auto address = ServerAddress::Parse(text);
    ASSERT_TRUE(address) << text;
    EXPECT_EQ(address->host + ":" + std::to_string(address->port), std::string(host) + ":" + std::to_string(port));
  }
  constexpr std::string_view refused =
      "|dgii.test:|dgii.test:0|dgii.test:65536|dgii.test:+80|http://"
      "dgii.test|u@dgii.test|a,b|[::1|[]|[x]|[::1]8080|:80";
  for (const std::string_view text : Split(refused, '|')) EXPECT_FALSE(ServerAddress::Parse(text)) << text;
  EXPECT_FALSE(ServerAddress::Parse(std::string(254, 'a')));
}

}  // namespace
}  // namespace tolvan
