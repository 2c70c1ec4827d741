#pragma once

namespace tolvan {

/// Makes the toolkit speak Spanish, with weeks from Monday, whatever the system's locale is and even where it has none
/// of Spanish. For before the toolkit starts. Numbers are written and read as before: the category of numbers stays
/// "C". Programs that are started from here are asked for Spanish too.
void SpeakSpanish();

}  // namespace tolvan
