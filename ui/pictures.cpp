#include "ui/pictures.h"

#include <wx/brush.h>
#include <wx/graphics.h>
#include <wx/icon.h>
#include <wx/image.h>

#include <algorithm>
#include <functional>
#include <memory>

namespace rvl {
namespace {

const wxColour kBlue(38, 94, 154), kPaper(250, 250, 250), kLine(150, 160, 172), kShade(226, 232, 240);

/// Draws on a transparent square whose sides have the length 32, whatever the size in pixels is.
wxBitmap Drawn(int size, const std::function<void(wxGraphicsContext&)>& draw) {
    wxImage image(size, size);
    image.InitAlpha();
    std::fill_n(image.GetAlpha(), size * size, static_cast<unsigned char>(wxIMAGE_ALPHA_TRANSPARENT));
    {
        const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(image));
        context->Scale(size / 32.0, size / 32.0);
        context->SetPen(*wxTRANSPARENT_PEN);
        draw(*context);
    }  // the image takes the drawing over here
    return wxBitmap(image);
}

void DrawTriangle(wxGraphicsContext& context, double left, double top, double length) {
    wxGraphicsPath path = context.CreatePath();
    path.MoveToPoint(left, top);
    path.AddLineToPoint(left + length, top + length / 2 + 1);
    path.AddLineToPoint(left, top + length + 2);
    path.CloseSubpath();
    context.FillPath(path);
}

/// A blue tile with a start sign.
void DrawApplication(wxGraphicsContext& context) {
    context.SetBrush(wxBrush(kBlue));
    context.DrawRoundedRectangle(2, 2, 28, 28, 5);
    context.SetBrush(*wxWHITE_BRUSH);
    DrawTriangle(context, 11, 8, 14);
}

/// A window that shows a table.
void DrawFrontend(wxGraphicsContext& context) {
    context.SetBrush(wxBrush(kLine));
    context.DrawRoundedRectangle(2, 4, 28, 24, 3);
    context.SetBrush(wxBrush(kPaper));
    context.DrawRectangle(3, 10, 26, 17);
    context.SetBrush(wxBrush(kBlue));
    context.DrawRoundedRectangle(2, 4, 28, 7, 3);
    context.SetBrush(wxBrush(kShade));
    context.DrawRectangle(3, 11, 8, 16);
    context.SetBrush(wxBrush(kLine));
    for (const int top : {15, 19, 23})
        context.DrawRectangle(3, top, 26, 1);
    context.DrawRectangle(11, 11, 1, 16);
    context.DrawRectangle(20, 11, 1, 16);
}

}  // namespace

wxIconBundle ApplicationIcons() {
    wxIconBundle icons;
    for (const int size : {16, 32, 48}) {
        wxIcon icon;
        icon.CopyFromBitmap(Drawn(size, DrawApplication));
        icons.AddIcon(icon);
    }
    return icons;
}

wxBitmap FrontendPicture(int size) {
    return Drawn(size, DrawFrontend);
}

}  // namespace rvl
