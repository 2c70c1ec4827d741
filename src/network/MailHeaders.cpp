#include "network/MailHeaders.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <random>

#include "base/Text.h"

namespace tolvan {
namespace {

bool IsPrintableAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char character) { return character >= ' ' && character <= '~'; });
}

std::string Base64(std::string_view bytes) {
  constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  for (std::size_t begin = 0; begin < bytes.size(); begin += 3) {
    const std::string_view group = bytes.substr(begin, 3);
    unsigned bits = 0;
    for (std::size_t index = 0; index < 3; ++index) {
      bits = bits << 8U | (index < group.size() ? static_cast<unsigned char>(group[index]) : 0U);
    }
    for (std::size_t index = 0; index < 4; ++index) {
      text += index <= group.size() ? digits[bits >> (18U - 6U * index) & 63U] : '=';
    }
  }
  return text;
}

template <class... Values>
std::string Formatted(const char* format, Values... values) {
  std::array<char, 64> buffer{};
  std::snprintf(buffer.data(), buffer.size(), format, values...);
  return buffer.data();
}

}  // namespace

std::string HeaderText(std::string_view text) {
  if (IsPrintableAscii(text)) return std::string(text);
  constexpr std::size_t mostBytes = 42;  // their base64 with the frame stays under 75 characters
  std::string words;
  while (!text.empty()) {
    std::size_t end = 0;
    for (std::size_t next = 0; next < text.size(); end = next) {
      NextCodePoint(text, next);
      if (next > mostBytes) break;
    }
    words.append(words.empty() ? "" : "\r\n ").append("=?UTF-8?B?" + Base64(text.substr(0, end)) + "?=");
    text.remove_prefix(end);
  }
  return words;
}

std::string AttachmentDisposition(std::string_view fileName) {
  if (IsPrintableAscii(fileName)) {
    const std::string escaped = ReplaceAll(ReplaceAll(fileName, "\\", "\\\\"), "\"", "\\\"");
    return "attachment; filename=\"" + escaped + "\"";
  }
  std::string encoded;
  for (const char character : fileName) {
    const bool isLetterOrDigit = (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
                                 (character >= '0' && character <= '9');
    if (isLetterOrDigit || character == '.' || character == '-' || character == '_') {
      encoded += character;
    } else {
      encoded += Formatted("%%%02X", static_cast<unsigned>(static_cast<unsigned char>(character)));
    }
  }
  return "attachment; filename*=UTF-8''" + encoded;
}

std::string HeaderDate(std::time_t moment) {
  // Not by strftime, whose names follow the program's language.
  constexpr std::array days{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
  constexpr std::array months{"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  std::tm local{};
  ::localtime_r(&moment, &local);
  const long minutes = std::labs(local.tm_gmtoff) / 60;
  return Formatted("%s, %02d %s %04d %02d:%02d:%02d %c%02ld%02ld", days.at(static_cast<std::size_t>(local.tm_wday)),
                   local.tm_mday, months.at(static_cast<std::size_t>(local.tm_mon)), local.tm_year + 1900,
                   local.tm_hour, local.tm_min, local.tm_sec, local.tm_gmtoff < 0 ? '-' : '+', minutes / 60,
                   minutes % 60);
}

std::string NewMessageId(std::string_view sender) {
  std::random_device random;
  std::string identifier = "<";
  for (int part = 0; part < 4; ++part) identifier += Formatted("%08x", random());
  return identifier.append(sender.substr(sender.find('@'))).append(">");
}

}  // namespace tolvan
