#include "platform/curl/CurlTransfer.h"

#include <new>

namespace tolvan {
namespace {

struct Cause {
  CURLcode code;
  const char* text;
};

constexpr std::array causes{
    Cause{CURLE_COULDNT_RESOLVE_HOST, "no se encuentra el servidor"},
    Cause{CURLE_COULDNT_CONNECT, "el servidor no acepta la conexión"},
    Cause{CURLE_OPERATION_TIMEDOUT, "el servidor no respondió a tiempo"},
    Cause{CURLE_GOT_NOTHING, "el servidor cerró la conexión sin responder"},
    Cause{CURLE_PARTIAL_FILE, "la respuesta llegó incompleta"},
    Cause{CURLE_RECV_ERROR, "se cortó la conexión al recibir"},
    Cause{CURLE_SEND_ERROR, "se cortó la conexión al enviar"},
    Cause{CURLE_WEIRD_SERVER_REPLY, "la respuesta del servidor no se entiende"},
    Cause{CURLE_UNSUPPORTED_PROTOCOL, "la respuesta del servidor no se entiende"},
    Cause{CURLE_SSL_CONNECT_ERROR, "no se pudo establecer la conexión cifrada"},
    Cause{CURLE_PEER_FAILED_VERIFICATION, "el certificado del servidor no es de confianza"},
    Cause{CURLE_LOGIN_DENIED, "el servidor no acepta el usuario o la clave"},
    Cause{CURLE_URL_MALFORMAT, "la dirección del servidor no sirve"},
    Cause{CURLE_OUT_OF_MEMORY, "memoria insuficiente"},
};

int StopWhenRequested(void* interruption, curl_off_t, curl_off_t, curl_off_t, curl_off_t) {
  return static_cast<const Interruption*>(interruption)->Requested() ? 1 : 0;
}

}  // namespace

void AppendLine(CurlList& list, const std::string& line) {
  curl_slist* longer = curl_slist_append(list.get(), line.c_str());
  if (longer == nullptr) throw std::bad_alloc();
  [[maybe_unused]] curl_slist* const same = list.release();
  list.reset(longer);
}

CurlTransfer::CurlTransfer(const char* protocols, const Limits& limits, const Interruption& interruption)
    : handle_(curl_easy_init()) {
  if (!handle_) throw std::bad_alloc();
  Set(CURLOPT_ERRORBUFFER, message_.data());
  Set(CURLOPT_PROTOCOLS_STR, protocols);
  Set(CURLOPT_PROXY, "");
  Set(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(limits.connect.count()));
  Set(CURLOPT_TIMEOUT_MS, static_cast<long>(limits.total.count()));
  Set(CURLOPT_NOPROGRESS, 0L);
  Set(CURLOPT_XFERINFOFUNCTION, StopWhenRequested);
  Set(CURLOPT_XFERINFODATA, &interruption);
}

void CurlTransfer::Require(CURLcode code) {
  if (code != CURLE_OK) throw std::bad_alloc();
}

CURLcode CurlTransfer::Perform() {
  message_[0] = '\0';
  return curl_easy_perform(handle_.get());
}

bool CurlTransfer::WasConnected() const {
  curl_off_t microseconds = 0;
  curl_easy_getinfo(handle_.get(), CURLINFO_CONNECT_TIME_T, &microseconds);
  return microseconds > 0;
}

long CurlTransfer::ResponseCode() const {
  long code = 0;
  curl_easy_getinfo(handle_.get(), CURLINFO_RESPONSE_CODE, &code);
  return code;
}

std::string CurlTransfer::CauseOf(CURLcode code) const {
  std::string technical = message_[0] == '\0' ? curl_easy_strerror(code) : message_.data();
  for (const Cause& cause : causes) {
    if (cause.code == code) return std::string(cause.text) + " (" + technical + ")";
  }
  return technical;
}

}  // namespace tolvan
