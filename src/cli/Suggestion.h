// What a user who mistyped a word may have meant.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tolvan {

/// "a, b o c". `choices` is not empty.
std::string Listed(const std::vector<std::string>& choices);

/// "; ¿quiso decir a o b?" with the known words nearest to `word`, or nothing when none is near: those that contain it,
/// else those that differ in the fewest letters missing, added, changed or swapped, at most one in three. Case does not
/// matter.
std::string DidYouMean(std::string_view word, const std::vector<std::string>& known);

/// "No existe la orden …", with what may have been meant.
std::string UnknownOrder(const std::string& word, const std::vector<std::string>& orders);

}  // namespace tolvan
