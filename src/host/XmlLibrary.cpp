#include "host/XmlLibrary.h"

namespace tolvan {

bool XmlLibrary::Available() noexcept {
  if (!available_) {
    try {
      available_ = CreateDocument() != nullptr;
    } catch (...) {  // whatever the reason, the library cannot be used
      available_ = false;
    }
  }
  return *available_;
}

}  // namespace tolvan
