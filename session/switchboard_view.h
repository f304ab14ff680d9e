#pragma once

#include <cstdint>
#include <vector>

#include "platform/text.h"

namespace rvl {

/// One front end of the lists.
struct FrontendItem {
    std::int32_t frontendId = 0;
    Text name;
    Text friendlyVersion;
    Text iconFile;  ///< path; empty or of no file for none
};

/// One row of the version history as it is shown.
struct VersionHistoryRow {
    Text version;
    Text dateReleased;
    Text releaseNotes;  ///< lines end with CR LF
    bool revoked = false;
};

/// The switchboard window (frmClientMain).
class SwitchboardView {
 public:
    enum class Tab { Switchboard, Advanced };

    virtual ~SwitchboardView() = default;

    /// Loads the window: its place and its splitter's are restored, the main tab shows.
    virtual void Show() = 0;
    virtual void SetCaption(const Text& caption) = 0;
    virtual Tab ShownTab() const = 0;
    virtual void SetBusyPointer(bool busy) = 0;

    // Both lists
    virtual void ClearFrontends() = 0;
    virtual void AddFrontend(const FrontendItem& item) = 0;  ///< replaces the one with the same id
    virtual void RemoveFrontend(std::int32_t frontendId) = 0;

    // The advanced tab
    virtual void EnableAdvanced(bool enabled) = 0;  ///< the tab, its list and the history
    virtual void ShowHistory(const std::vector<VersionHistoryRow>& rows) = 0;  ///< replaces what is shown

    // The windows of the process, by name; this one is called frmClientMain
    virtual std::vector<Text> LoadedForms() const = 0;
    virtual void UnloadForm(const Text& name) = 0;  ///< one of the loaded forms; errors are ignored
};

}  // namespace rvl
