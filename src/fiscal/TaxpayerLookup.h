// Asks the tax authority's public page for the name behind an identifier. The request carries the two opaque values
// that were captured from the page's form; when the authority changes its page they must be captured again. The answer
// is recognised by two things only: the cells that show the taxpayer, and the name of the search form's text box.
// Everything else on the page may change.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "host/NetworkServices.h"

namespace tolvan {

class HostApplication;

/// How a lookup ended.
enum class LookupOutcome {
  NotAsked,       ///< no lookup has been made
  NotConfigured,  ///< the host names no server, or not in the form host[:port]
  NoAnswer,       ///< no complete answer
  OtherStatus,    ///< answered with a status other than 200
  NotListed,      ///< the registry does not hold the identifier
  UnknownPage,    ///< an answer that is not the page this program knows
  Found,
};

struct LookupResult {
  LookupOutcome outcome = LookupOutcome::NotAsked;
  std::string name;      ///< empty unless Found
  bool complete = true;  ///< false when the answer ended within the name
  std::string detail;    ///< the client's failure, the status, or the setting that cannot be used
};

struct LookupSettings {
  std::string server;  ///< host[:port], port 80 when not given; an IPv6 address stands in brackets
  std::string viewState;
  std::string eventValidation;
};

LookupSettings LookupSettingsOf(const HostApplication& application);

class TaxpayerLookup {
 public:
  /// `client` must outlive this object.
  TaxpayerLookup(HttpClient& client, LookupSettings settings) : client_(client), settings_(std::move(settings)) {}

  /// `code` is a valid identifier, digits only. Throws HostError Interrupted.
  LookupResult Ask(std::string_view code) const;

 private:
  HttpClient& client_;
  LookupSettings settings_;
};

/// Spanish text for the user.
std::string TextForPeople(const LookupResult& result);

/// What an answer of the authority's server is.
enum class PageKind {
  NameShown,
  NotListed,  ///< the search form without the taxpayer: the registry does not hold the identifier
  Unknown,    ///< not the page this program knows
};

/// What a page says of one identifier.
struct PageReading {
  PageKind kind = PageKind::Unknown;

  /// As the page has it, trimmed of blanks: entities and mark-up inside stay. UTF-8; a name that is not UTF-8 is read
  /// as Windows-1252. Empty unless NameShown.
  std::string name;

  /// False when the page ends within the name.
  bool complete = true;
};

/// Reads the page that answered the question for `code`, a normalised identifier.
PageReading ReadTaxpayerPage(std::string_view page, std::string_view code);

}  // namespace tolvan
