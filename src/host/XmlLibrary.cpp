#include "host/XmlLibrary.h"

namespace tolvan {

bool XmlLibrary::Available() noexcept {
  if (!available_) available_ = Try();
  return *available_;
}

bool XmlLibrary::Try() noexcept {
  try {
    return CreateDocument() != nullptr;
  } catch (const HostError& error) {
    failure_ = error;
  } catch (...) {  // whatever the reason, the library cannot be used
  }
  return false;
}

}  // namespace tolvan
