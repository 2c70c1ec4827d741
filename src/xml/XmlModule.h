// The entry point of the module that holds the XML library. It is a library of its own, loaded when a transport
// document is first made: linking it costs every start of a program half a millisecond.
#pragma once

#include "host/XmlDocument.h"

extern "C" {

/// The caller owns the result and deletes it; null when there is no memory.
using TolvanMakeXmlLibrary = tolvan::XmlLibrary*();

TolvanMakeXmlLibrary tolvanMakeXmlLibrary;
}

namespace tolvan {

inline constexpr const char* xmlModuleFile = "libtolvan_xml.so";

}  // namespace tolvan
