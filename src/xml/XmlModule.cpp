#include <new>
#include "xml/PugiXmlLibrary.h"

#include <memory>

extern "C" {

[[gnu::visibility("default")]] tolvan::XmlLibrary* tolvanMakeXmlLibrary() {
  return std::make_unique<tolvan::PugiXmlLibrary>().release();
}
}
