#include "store/DeferredProviders.h"

#include "base/Addresses.h"
#include "base/Text.h"
#include "host/HostError.h"
#include "host/UserInterface.h"

namespace tolvan {

SpreadsheetApplication& DeferredSpreadsheetApplication::Application() {
  try {
    return application_.One(clock_, files_, newWorkbookFolder_);
  } catch (const HostError& error) {
    throw HostError(HostErrorKind::Unreachable, TextForPeople(error));
  }
}

HttpResponse DeferredHttpClient::Get(const HttpRequest& request) {
  try {
    static_cast<void>(client_.One(interruption_));
  } catch (const HostError& error) {
    return {.succeeded = false, .statusText = {}, .body = {}, .failure = TextForPeople(error)};
  }
  return client_.One(interruption_).Get(request);
}

MailOutcome DeferredMailService::SendFile(std::string_view path, std::string_view recipient) {
  if (options_.server.empty()) {
    return {MailStatus::NoService, "No hay servidor de correo en la configuración ([correo] servidor)."};
  }
  if (!IsEmailAddress(recipient)) {
    return {MailStatus::NotSent, "«" + std::string(recipient) + "» no es una dirección de correo."};
  }
  try {
    static_cast<void>(Sender());
  } catch (const HostError& error) {
    return {MailStatus::NoService, TextForPeople(error)};
  }
  return Sender().SendFile(path, recipient);
}

MailOutcome DeferredMailService::SendFileToChosenRecipient(std::string_view path) {
  if (dialogs_ == nullptr) {
    return {MailStatus::NotSent, "No hay un destinatario configurado ni a quién preguntarlo."};
  }
  std::string prompt = "Dirección de correo a la que se envía el archivo:";
  std::string initial;
  for (;;) {
    const std::optional<std::string> answer = dialogs_->AskText(options_.product, prompt, initial);
    const std::string_view address = answer ? TrimBlanks(*answer) : std::string_view();
    if (address.empty()) return {MailStatus::CancelledByUser, {}};
    if (IsEmailAddress(address)) return SendFile(path, address);
    // The same text twice comes from something that cannot give another answer, such as a script.
    if (address == initial) return {MailStatus::NotSent, "«" + initial + "» no es una dirección de correo."};
    initial = address;
    prompt = "«" + initial + "» no es una dirección de correo.\r\nDirección de correo a la que se envía el archivo:";
  }
}

}  // namespace tolvan
