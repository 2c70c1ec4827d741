// Windows reopen where the user left them: state, position and, where it can be changed, size, kept in the host's
// layout store under "Ventanas"; columns of lists under "Listas". All measures are twips.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/HostContext.h"

namespace tolvan {

inline constexpr std::int32_t twipsPerPixel = 15;  ///< of a plain screen

struct Rectangle {
  std::int32_t left = 0;
  std::int32_t top = 0;
  std::int32_t width = 0;
  std::int32_t height = 0;
  bool operator==(const Rectangle&) const = default;
};

enum class WindowState : std::int32_t { Normal = 0, Minimised = 1, Maximised = 2 };

/// What of a window belongs to its layout.
class LayoutWindow {
 public:
  virtual ~LayoutWindow() = default;

  /// Distinguishes windows that share the layout store; may be empty.
  virtual std::string LayoutTag() const = 0;

  /// Whether the border is sizable.
  virtual bool IsSizable() const = 0;

  virtual WindowState State() const = 0;
  virtual void SetState(WindowState state) = 0;

  /// In the normal state.
  virtual Rectangle Bounds() const = 0;
  virtual void SetBounds(const Rectangle& bounds) = 0;

  /// The parts of the screens that windows may cover, the main one first; empty when they are not known.
  virtual std::vector<Rectangle> WorkAreas() const = 0;
};

void SaveLayout(AppServices& services, const LayoutWindow& window);

/// Without a stored position the window is centred. A window that would lie outside the screens is brought back.
void RestoreLayout(AppServices& services, LayoutWindow& window);

/// `bounds` moved, and shrunk where it must be, so that it lies inside the work area that it overlaps most, or inside
/// the first. Unchanged when there are none.
Rectangle BroughtOnScreen(Rectangle bounds, const std::vector<Rectangle>& workAreas);

/// How the user left the columns of a list. Columns are numbered by their place in the list's definition.
struct ListLayout {
  std::vector<std::int32_t> widths;  ///< by column; 0 where none is stored
  std::vector<std::int32_t> order;   ///< the columns from left to right, each exactly once
  std::int32_t sortColumn = -1;      ///< -1: not sorted
  bool ascending = true;
  bool operator==(const ListLayout&) const = default;
};

/// `tag` distinguishes the lists.
void SaveListLayout(AppServices& services, std::string_view tag, const ListLayout& layout);

/// What is not stored, or stored in a form that fits no list of so many columns, is as in a new list.
ListLayout LoadListLayout(AppServices& services, std::string_view tag, std::size_t columns);

}  // namespace tolvan
