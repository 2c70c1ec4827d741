// The header lines of a message. Whatever the texts hold, no line end reaches a header.
#pragma once

#include <ctime>
#include <string>
#include <string_view>

namespace tolvan {

/// A free text such as a subject: as it stands when it is printable ASCII, else in encoded words (RFC 2047).
std::string HeaderText(std::string_view text);

/// The value of Content-Disposition for a file of that name; a name beyond ASCII by RFC 2231.
std::string AttachmentDisposition(std::string_view fileName);

/// "Fri, 31 Jan 2025 19:00:00 -0400", in the computer's time zone (RFC 5322).
std::string HeaderDate(std::time_t moment);

/// A new identifier "<…@domain>", the domain that of the address.
std::string NewMessageId(std::string_view sender);

}  // namespace tolvan
