#include "store/DeferredXmlLibrary.h"

#include <new>

namespace tolvan {

std::unique_ptr<XmlDocument> DeferredXmlLibrary::CreateDocument() {
  if (!library_) {
    library_.reset(module_.EntryPoint<TolvanMakeXmlLibrary>("tolvanMakeXmlLibrary")());
    if (!library_) throw std::bad_alloc();
  }
  return library_->CreateDocument();
}

}  // namespace tolvan
