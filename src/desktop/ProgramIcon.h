#pragma once

namespace tolvan {

/// Gives every window that is shown from now on, the toolkit's own too, the sign of the program.
void UseProgramIcon();

}  // namespace tolvan
