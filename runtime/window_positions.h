#pragma once

#include <cstdint>
#include <vector>

#include "platform/text.h"

namespace rvl {

// Everything is in pixels, as it is stored: the windows know no other unit, so that nothing is converted.

struct PixelRectangle {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
};

/// A window whose place is kept. Its calls may raise errors.
class PlacedWindow {
 public:
    virtual ~PlacedWindow() = default;

    /// The place of the window while it is not maximized, whether or not it is now.
    virtual PixelRectangle NormalRectangle() const = 0;
    virtual void SetNormalRectangle(const PixelRectangle& rectangle) = 0;
    virtual bool IsMaximized() const = 0;
    virtual void Maximize() = 0;  ///< restoring leads back to the normal rectangle

    /// Where windows can be seen; at least one, the primary one first.
    virtual std::vector<PixelRectangle> Screens() const = 0;
};

class PositionedSplitter {
 public:
    virtual ~PositionedSplitter() = default;
    virtual std::int32_t Position() const = 0;
    virtual void SetPosition(std::int32_t position) = 0;  ///< keeps what it holds within its window
};

// The section is a key below HKEY_CURRENT_USER "Software\Ravelin\", such as "Client\WindowPos". Errors are
// reported and do not leave these procedures.

/// Restores the window. What is missing or no number leaves the size and centres the window on the primary
/// screen, in that direction, and makes the result false; so does an error, which leaves everything. A window
/// that would lie outside of all screens is centred: its user has unplugged the screen on which it was, and
/// could not reach it.
bool LoadWindowPos(PlacedWindow& window, const Text& section, bool positionOnly = false);
void SaveWindowPos(const PlacedWindow& window, const Text& section, bool positionOnly = false);

/// A position that is missing or no number leaves the splitter.
void LoadSplitterPos(PositionedSplitter& splitter, const Text& section, const Text& valueName);
void SaveSplitterPos(const PositionedSplitter& splitter, const Text& section, const Text& valueName);

}  // namespace rvl
