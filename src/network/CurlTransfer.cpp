#include "network/CurlTransfer.h"

#include <curl/curl.h>

#include <algorithm>
#include <array>
#include <new>

#include "system/Waiting.h"

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
    Cause{CURLE_HTTP_RETURNED_ERROR, "el servidor respondió con un error"},
    Cause{CURLE_REMOTE_ACCESS_DENIED, "el servidor no da acceso"},
    Cause{CURLE_USE_SSL_FAILED, "el servidor no ofrece una conexión cifrada"},
    Cause{CURLE_SSL_CACERT_BADFILE, "no se pudo leer el archivo de autoridades de certificación"},
    Cause{CURLE_SSL_CERTPROBLEM, "el certificado propio no sirve"},
    Cause{CURLE_SSL_CIPHER, "no hay un cifrado común con el servidor"},
    Cause{CURLE_UPLOAD_FAILED, "el servidor no aceptó el envío"},
    Cause{CURLE_READ_ERROR, "no se pudo leer lo que había que enviar"},
    Cause{CURLE_WRITE_ERROR, "no se pudo recibir la respuesta"},
    Cause{CURLE_INTERFACE_FAILED, "no hay una salida de red"},
};

}  // namespace

void RequireSet(int code) {
  if (code != CURLE_OK) throw std::bad_alloc();
}

void CurlListDeleter::operator()(curl_slist* list) const {
  curl_slist_free_all(list);
}

void CurlTransfer::Deleter::operator()(void* handle) const {
  curl_easy_cleanup(handle);
}

void AppendLine(CurlList& list, const std::string& line) {
  curl_slist* longer = curl_slist_append(list.get(), line.c_str());
  if (longer == nullptr) throw std::bad_alloc();
  [[maybe_unused]] curl_slist* const same = list.release();
  list.reset(longer);
}

CurlTransfer::CurlTransfer(const char* protocols, const Limits& limits, const Interruption& interruption,
                           std::string whoIsWaitedFor)
    : handle_(curl_easy_init()), interruption_(interruption), whoIsWaitedFor_(std::move(whoIsWaitedFor)) {
  if (!handle_) throw std::bad_alloc();
  SetText(CURLOPT_PROTOCOLS_STR, protocols);
  SetText(CURLOPT_PROXY, "");
  SetNumber(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(limits.connect.count()));
  SetNumber(CURLOPT_TIMEOUT_MS, static_cast<long>(limits.total.count()));
}

void CurlTransfer::SetNumber(int option, long value) {
  RequireSet(curl_easy_setopt(handle_.get(), static_cast<CURLoption>(option), value));
}

void CurlTransfer::SetText(int option, const std::string& value) {
  RequireSet(curl_easy_setopt(handle_.get(), static_cast<CURLoption>(option), value.c_str()));
}

void CurlTransfer::SetPointer(int option, void* value) {
  RequireSet(curl_easy_setopt(handle_.get(), static_cast<CURLoption>(option), value));
}

void CurlTransfer::SetCallback(int option, CurlCallback callback) {
  RequireSet(curl_easy_setopt(handle_.get(), static_cast<CURLoption>(option), callback));
}

int CurlTransfer::Perform() {
  if (interruption_.Requested()) return CURLE_ABORTED_BY_CALLBACK;
  const std::unique_ptr<CURLM, decltype(&curl_multi_cleanup)> transfers(curl_multi_init(), &curl_multi_cleanup);
  if (!transfers || curl_multi_add_handle(transfers.get(), handle_.get()) != CURLM_OK) throw std::bad_alloc();
  const int code = PerformIn(transfers.get());
  curl_multi_remove_handle(transfers.get(), handle_.get());
  return code;
}

/// In slices, because libcurl's own loop would not come back before the transfer is over.
int CurlTransfer::PerformIn(void* transfers) {
  CURLMcode failure = CURLM_OK;
  Waiting waiting(&interruption_, whoIsWaitedFor_, serverPatience);
  const WaitEnd end = waiting.Until(
      [&](std::chrono::milliseconds time) {
        int running = 0;
        failure = curl_multi_perform(transfers, &running);
        if (failure == CURLM_OK && running > 0) {
          failure = curl_multi_poll(transfers, nullptr, 0, static_cast<int>(time.count()), nullptr);
        }
        return failure != CURLM_OK || running == 0;
      },
      std::nullopt);  // libcurl keeps the limits
  if (end == WaitEnd::Stopped) return CURLE_ABORTED_BY_CALLBACK;
  int left = 0;
  const CURLMsg* const message = curl_multi_info_read(transfers, &left);
  if (failure != CURLM_OK || message == nullptr) return CURLE_FAILED_INIT;
  return message->data.result;
}

bool CurlTransfer::WasConnected() const {
  // The time of the connection would include the encryption; the port is there as soon as the server took the call.
  long localPort = 0;
  curl_easy_getinfo(handle_.get(), CURLINFO_LOCAL_PORT, &localPort);
  return localPort > 0;
}

long CurlTransfer::ResponseCode() const {
  long code = 0;
  curl_easy_getinfo(handle_.get(), CURLINFO_RESPONSE_CODE, &code);
  return code;
}

std::string CurlTransfer::CauseOf(int code) {
  const auto cause = std::ranges::find(causes, code, [](const Cause& each) { return int{each.code}; });
  const std::string text = cause == causes.end() ? "la transferencia no pudo completarse" : cause->text;
  return text + " (código " + std::to_string(code) + ")";
}

}  // namespace tolvan
