#include "store/DeferredHttpClient.h"

#include "host/HostError.h"

namespace tolvan {

HttpResponse DeferredHttpClient::Get(const HttpRequest& request) {
  try {
    if (!client_) client_ = loader_.MakeHttpClient(interruption_);
  } catch (const HostError& error) {
    HttpResponse response;
    response.failure = TextForPeople(error);
    return response;
  }
  return client_->Get(request);
}

}  // namespace tolvan
