#include "tools/msaccess/painter.h"

#include "tools/msaccess/access_program.h"

namespace rvl::msaccess {
namespace {

constexpr int kStrip = 22;  ///< height of caption, menu and status bar
constexpr int kLetter = 6;  ///< width, about

void PaintCaption(Painter& painter, int x, int y, int width, TextView title) {
    painter.Fill(x, y, width, kStrip, Painter::kCaption);
    painter.Write(x + 8, y + 15, title, Painter::kWhite);
    painter.Box(x + width - 20, y + 4, 15, 14, Painter::kFace);
    painter.Write(x + width - 15, y + 15, "x");
}

void PaintMenu(Painter& painter, int y) {
    int x = 10;
    for (const TextView item : {"File", "Edit", "View", "Insert", "Tools", "Window", "Help"}) {
        painter.Write(x, y + 15, item);
        x += static_cast<int>(item.size()) * kLetter + 16;
    }
}

void PaintTools(Painter& painter, int y) {
    for (int tool = 0; tool < 14; ++tool)
        painter.Box(10 + 24 * tool + 10 * (tool / 4), y + 3, 17, 15,
                    tool % 3 == 0 ? Painter::kWhite : Painter::kFace);
}

void PaintDatabaseWindow(Painter& painter, int x, int y, const Text& database) {
    constexpr int kWidth = 430, kHeight = 270, kObjects = 110;
    painter.Box(x, y, kWidth, kHeight, Painter::kFace);
    PaintCaption(painter, x + 2, y + 2, kWidth - 3, database + " : Database");
    painter.Box(x + kObjects, y + 34, kWidth - kObjects - 8, kHeight - 42, Painter::kWhite);
    int row = y + 52;
    for (const TextView object : {"Tables", "Queries", "Forms", "Reports", "Pages", "Macros", "Modules"}) {
        painter.Write(x + 14, row, object);
        row += 24;
    }
    painter.Write(x + kObjects + 14, y + 56, "Create form in Design view");
    painter.Write(x + kObjects + 14, y + 76, database);
}

}  // namespace

void PaintMainWindow(Painter& painter, int width, int height, const Text& database, bool withCaption) {
    int y = 0;
    painter.Fill(0, 0, width, height, Painter::kFace);
    if (withCaption) {
        PaintCaption(painter, 0, y, width, MainTitle(database));
        y += kStrip;
    }
    PaintMenu(painter, y);
    PaintTools(painter, y + kStrip);
    y += 2 * kStrip;
    painter.Fill(0, y, width, height - y - kStrip, Painter::kShade);
    if (!database.empty()) PaintDatabaseWindow(painter, 30, y + 30, database);
    painter.Write(8, height - 7, "Ready");
}

}  // namespace rvl::msaccess
