#include "spreadsheet/XmlStream.h"

#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include <array>
#include <new>
#include <utility>

#include "base/Text.h"
#include "spreadsheet/WorkbookLimits.h"

namespace tolvan {
namespace {

constexpr std::array<std::string_view, 4> knownNamespaces{
    "http://schemas.openxmlformats.org/spreadsheetml/2006/main",
    "http://purl.oclc.org/ooxml/spreadsheetml/main",
    "http://schemas.openxmlformats.org/package/2006/relationships",
    "http://schemas.openxmlformats.org/package/2006/content-types",
};

std::string_view View(const xmlChar* text) {
  return text == nullptr ? std::string_view() : std::string_view(reinterpret_cast<const char*>(text));
}

/// The names that come hundreds of thousands of times have one letter.
std::string_view NameView(const xmlChar* name) {
  return name[0] != 0 && name[1] == 0 ? std::string_view(reinterpret_cast<const char*>(name), 1) : View(name);
}

// With entities left alone the parser hands out "&" of a value in this form.
std::string Unescaped(std::string_view value) {
  return ReplaceAll(value, "&#38;", "&");
}

}  // namespace

std::optional<std::string> XmlAttributes::Find(std::string_view name) const {
  for (std::size_t i = 0; i < count_; ++i)
    if (!HasNamespace(i) && name == Name(i)) return Unescaped(Value(i));
  return std::nullopt;
}

std::optional<std::string> XmlAttributes::FindRelationship(std::string_view name) const {
  for (std::size_t i = 0; i < count_; ++i)
    if (HasNamespace(i) && name == Name(i) && std::string_view(Text(i, 2)).ends_with("/relationships"))
      return Unescaped(Value(i));
  return std::nullopt;
}

struct XmlStream::Parser {
  XmlHandler& handler;
  std::string partName;
  xmlParserCtxtPtr context = nullptr;
  std::exception_ptr failure;        // thrown by the handler; must not cross the C library
  const xmlChar* lastUri = nullptr;  // namespaces are interned: the same pointer is the same namespace
  bool lastUriKnown = false;
  bool stopped = false;

  Parser(XmlHandler& xmlHandler, std::string name) : handler(xmlHandler), partName(std::move(name)) {}
  ~Parser() { xmlFreeParserCtxt(context); }
  Parser(const Parser&) = delete;
  Parser& operator=(const Parser&) = delete;

  bool IsKnown(const xmlChar* uri) {
    if (uri != lastUri) {
      lastUri = uri;
      lastUriKnown = false;
      for (const std::string_view known : knownNamespaces) lastUriKnown = lastUriKnown || View(uri) == known;
    }
    return lastUriKnown;
  }

  template <class Action>
  void Guard(Action action) noexcept {
    if (stopped) return;
    try {
      action();
    } catch (...) {
      failure = std::current_exception();
      Stop();
    }
  }

  void Stop() noexcept {
    stopped = true;
    xmlStopParser(context);
  }

  static void StartElement(void* self, const xmlChar* name, const xmlChar*, const xmlChar* uri, int, const xmlChar**,
                           int count, int, const xmlChar** attributes) {
    auto& parser = *static_cast<Parser*>(self);
    parser.Guard([&] {
      parser.handler.StartElement(parser.IsKnown(uri) ? NameView(name) : std::string_view(),
                                  XmlAttributes(attributes, static_cast<std::size_t>(count)));
    });
  }

  static void EndElement(void* self, const xmlChar*, const xmlChar*, const xmlChar*) {
    auto& parser = *static_cast<Parser*>(self);
    parser.Guard([&] { parser.handler.EndElement(); });
  }

  static void Characters(void* self, const xmlChar* text, int length) {
    auto& parser = *static_cast<Parser*>(self);
    parser.Guard([&] { parser.handler.Text({reinterpret_cast<const char*>(text), static_cast<std::size_t>(length)}); });
  }

  static void DocumentType(void* self, const xmlChar*, const xmlChar*, const xmlChar*) {
    auto& parser = *static_cast<Parser*>(self);
    parser.Guard([&] { FailDamaged("la parte «" + parser.partName + "» declara un tipo de documento"); });
  }

  // Without it the library writes to standard error.
  static void Quiet(void*, xmlErrorPtr) {}
};

XmlStream::XmlStream(XmlHandler& handler, std::string partName)
    : parser_(std::make_unique<Parser>(handler, std::move(partName))) {
  xmlSAXHandler events{};
  events.initialized = XML_SAX2_MAGIC;
  events.startElementNs = &Parser::StartElement;
  events.endElementNs = &Parser::EndElement;
  events.characters = &Parser::Characters;
  // The same function as for other text, so that the parser does not try to recognise blanks.
  events.ignorableWhitespace = &Parser::Characters;
  events.cdataBlock = &Parser::Characters;
  events.internalSubset = &Parser::DocumentType;
  events.serror = &Parser::Quiet;
  parser_->context = xmlCreatePushParserCtxt(&events, parser_.get(), nullptr, 0, nullptr);
  if (parser_->context == nullptr) throw std::bad_alloc();
  xmlCtxtUseOptions(parser_->context, XML_PARSE_NONET);
}

XmlStream::~XmlStream() = default;

void XmlStream::Feed(std::span<const char> bytes) {
  Parse(bytes, false);
}

void XmlStream::Finish() {
  Parse({}, true);
}

void XmlStream::Parse(std::span<const char> bytes, bool last) {
  Parser& parser = *parser_;
  const int code = xmlParseChunk(parser.context, bytes.data(), static_cast<int>(bytes.size()), last ? 1 : 0);
  if (parser.failure) std::rethrow_exception(std::exchange(parser.failure, nullptr));
  if (code == XML_ERR_NO_MEMORY) throw std::bad_alloc();
  if (parser.context->wellFormed == 0 || parser.stopped)
    FailDamaged("la parte «" + parser.partName + "» no es XML correcto");
}

}  // namespace tolvan
