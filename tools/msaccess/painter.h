#pragma once

#include "platform/text.h"

namespace rvl::msaccess {

/// Draws plain areas and lines of text into one window. Colours are 0xRRGGBB.
class Painter {
 public:
    static constexpr unsigned long kFace = 0xd4d0c8, kShade = 0x808080, kWhite = 0xffffff, kBlack = 0,
                                   kCaption = 0x0a246a;

    virtual ~Painter() = default;
    virtual void Fill(int x, int y, int width, int height, unsigned long color) = 0;

    /// Filled, with a line around it.
    virtual void Box(int x, int y, int width, int height, unsigned long color) = 0;

    /// y is that of the base line.
    virtual void Write(int x, int y, TextView text, unsigned long color) = 0;
    void Write(int x, int y, TextView text) { Write(x, y, text, kBlack); }
};

/// The main window of Access with a database open, or with none (an empty name). The caption is drawn where
/// nobody else does it.
void PaintMainWindow(Painter& painter, int width, int height, const Text& database, bool withCaption);

}  // namespace rvl::msaccess
