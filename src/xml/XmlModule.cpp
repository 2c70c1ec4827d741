#include <new>

#include "xml/PugiXmlLibrary.h"

extern "C" {

[[gnu::visibility("default")]] tolvan::XmlLibrary* tolvanMakeXmlLibrary() {
  return new (std::nothrow) tolvan::PugiXmlLibrary;
}
}
