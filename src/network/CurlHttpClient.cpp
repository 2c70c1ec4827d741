#include "network/CurlServices.h"

#include <curl/curl.h>

#include <algorithm>
#include <new>

#include "host/HostError.h"
#include "network/CurlTransfer.h"

namespace tolvan {
namespace {

bool HasControl(std::string_view text) {
  return std::any_of(text.begin(), text.end(), [](char character) {
    const auto byte = static_cast<unsigned char>(character);
    return byte < 0x20 || byte == 0x7F;
  });
}

// Empty when the text is no host.
std::string AuthorityOf(const HttpRequest& request) {
  std::string host = request.host;
  const bool isIpv6 = std::count(host.begin(), host.end(), ':') > 1;
  if (isIpv6 && !host.starts_with('[')) host = "[" + host + "]";
  const bool hasForbidden = host.find_first_of(" /\\?#@%") != std::string::npos || HasControl(host);
  if (host.empty() || hasForbidden || (!isIpv6 && host.find_first_of(":[]") != std::string::npos)) return {};
  return host + ":" + std::to_string(request.port);
}

struct Body {
  std::string bytes;
  std::size_t most = 0;
  bool tooLong = false;
  bool noMemory = false;
};

std::size_t TakeBody(char* bytes, std::size_t size, std::size_t count, void* target) {
  Body& body = *static_cast<Body*>(target);
  const std::size_t length = size * count;
  body.tooLong = length > body.most - body.bytes.size();
  if (body.tooLong) return 0;
  try {
    body.bytes.append(bytes, length);
  } catch (const std::bad_alloc&) {
    // No exception may pass through the C library; a short count makes it give up.
    body.noMemory = true;
    return 0;
  }
  return length;
}

std::string FailureOf(const Body& body, int code) {
  if (body.tooLong) return "la respuesta supera " + std::to_string(body.most) + " bytes";
  if (body.noMemory) return "memoria insuficiente";
  return CurlTransfer::CauseOf(code);
}

}  // namespace

HttpResponse CurlHttpClient::Get(const HttpRequest& request) {
  HttpResponse response;
  const std::string authority = AuthorityOf(request);
  if (authority.empty() || request.port == 0) response.failure = "«" + request.host + "» no es un servidor";
  if (HasControl(request.pathAndQuery)) response.failure = "la consulta contiene un carácter de control";
  if (!response.failure.empty()) return response;

  Body body{{}, request.maximumBody};
  const std::string address = "http://" + authority + "/";
  const std::string target = "/" + request.pathAndQuery;
  CurlTransfer transfer("http", {request.connectTimeout, request.totalTimeout}, interruption_,
                        "El servidor " + request.host + " no ha respondido todavía; esperando…");
  transfer.SetText(CURLOPT_URL, address);
  transfer.SetText(CURLOPT_REQUEST_TARGET, target);
  transfer.SetNumber(CURLOPT_FOLLOWLOCATION, 0);
  transfer.SetNumber(CURLOPT_HTTP_VERSION, CURL_HTTP_VERSION_1_1);
  transfer.SetNumber(CURLOPT_HTTP09_ALLOWED, 0);
  transfer.SetText(CURLOPT_USERAGENT, "Zel_ImpExp");
  transfer.SetCallback(CURLOPT_WRITEFUNCTION, TakeBody);
  transfer.SetPointer(CURLOPT_WRITEDATA, &body);
  const int code = transfer.Perform();
  if (code == CURLE_ABORTED_BY_CALLBACK) {
    throw HostError(HostErrorKind::Interrupted, "se interrumpió la consulta", request.host);
  }
  response.succeeded = code == CURLE_OK;
  if (transfer.ResponseCode() != 0) response.statusText = std::to_string(transfer.ResponseCode());
  if (!response.succeeded) response.failure = FailureOf(body, code);
  response.body = std::move(body.bytes);
  return response;
}

}  // namespace tolvan
