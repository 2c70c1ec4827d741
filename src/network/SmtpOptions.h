#pragma once

#include <chrono>
#include <string>

namespace tolvan {

/// How mail leaves the store. Texts are UTF-8.
struct SmtpOptions {
  std::string server;  ///< smtp:// or smtps:// with host and port; empty: there is no mail server
  std::string user;    ///< empty: no login
  std::string password;
  std::string sender;   ///< an address
  std::string product;  ///< named in subject and body, as is the store
  std::string storeId;
  std::chrono::milliseconds connectTimeout{10'000};
  std::chrono::milliseconds answerTimeout{30'000};  ///< the longest wait for any one reply of the server
  std::chrono::milliseconds totalTimeout{120'000};
};

}  // namespace tolvan
