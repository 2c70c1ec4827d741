#pragma once

#include <memory>

#include "host/NetworkServices.h"
#include "store/CurlLoader.h"

namespace tolvan {

/// The HTTP client of the curl module, loaded at the first request.
class DeferredHttpClient final : public HttpClient {
 public:
  /// The references must outlive the object.
  DeferredHttpClient(CurlLoader& loader, const Interruption& interruption)
      : loader_(loader), interruption_(interruption) {}

  HttpResponse Get(const HttpRequest& request) override;

 private:
  CurlLoader& loader_;
  const Interruption& interruption_;
  std::unique_ptr<HttpClient> client_;
};

}  // namespace tolvan
