// GET requests by libcurl. The request line is given to libcurl as it stands, so nothing in it is escaped or shortened;
// only what would end the line (a control character) is refused.
#pragma once

#include "host/NetworkServices.h"
#include "host/UserInterface.h"

namespace tolvan {

class CurlHttpClient final : public HttpClient {
 public:
  explicit CurlHttpClient(const Interruption& interruption) : interruption_(interruption) {}

  HttpResponse Get(const HttpRequest& request) override;

 private:
  const Interruption& interruption_;
};

}  // namespace tolvan
