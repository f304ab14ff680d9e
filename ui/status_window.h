#pragma once

#include "platform/text.h"
#include "ui/main_window.h"

class wxBoxSizer;
class wxStaticText;

namespace rvl {

/// A small window that shows lines of text, for those who debug a process that shows none otherwise.
class StatusWindow : public MainWindow {
 public:
    StatusWindow(const char* formName, const Text& caption);

 protected:
    wxStaticText* AddLine();
    void SetLine(wxStaticText* line, const Text& text);

 private:
    wxBoxSizer* m_lines;  ///< owned by the toolkit, as every control
};

}  // namespace rvl
