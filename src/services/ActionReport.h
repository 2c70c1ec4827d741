// What a run of an action has to say: made once by the action, and handed on as it is through dispatcher and component
// to the window, the command or the host, none of which keeps a version of its own.
#pragma once

#include <any>
#include <string>

namespace tolvan {

struct ActionReport {
  /// Whether what was asked for was done.
  bool done = false;

  /// The messages in Spanish, each after a line break (CR LF); empty when there is nothing to say.
  std::string text{};

  /// What helps whoever must mend a failure and is not in `text`, which is for everybody; Spanish, without a line break
  /// at its start. Usually empty.
  std::string cause{};

  /// Whether the action itself has shown the user how it went, so that no further box is needed.
  bool told = false;

  /// What only this action has to say, such as files and counts, in the type that the action documents; empty when
  /// nothing ran.
  std::any details{};

  /// The details, or those of an action that did nothing when there are none of that type.
  template <class Details>
  Details DetailsAs() const {
    const auto* const own = std::any_cast<Details>(&details);
    return own != nullptr ? *own : Details{};
  }
};

}  // namespace tolvan
