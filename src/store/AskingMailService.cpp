#include "store/AskingMailService.h"

#include "base/Addresses.h"
#include "base/Text.h"
#include "host/HostError.h"

namespace tolvan {

MailOutcome AskingMailService::SendFile(std::string_view path, std::string_view recipient) {
  if (options_.server.empty()) {
    return {MailStatus::NoService, "No hay servidor de correo en la configuración ([correo] servidor)."};
  }
  if (!IsEmailAddress(recipient)) {
    return {MailStatus::NotSent, "«" + std::string(recipient) + "» no es una dirección de correo."};
  }
  try {
    if (!sender_) sender_ = loader_.MakeMailService(options_, files_, interruption_);
  } catch (const HostError& error) {
    return {MailStatus::NoService, TextForPeople(error)};
  }
  return sender_->SendFile(path, recipient);
}

MailOutcome AskingMailService::SendFileToChosenRecipient(std::string_view path) {
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
