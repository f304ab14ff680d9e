#pragma once

#include <functional>
#include <list>

#include "runtime/timer.h"
#include "session/desktop.h"

namespace rvl {

/// A front end and how Access is to be started on it. An empty workgroup, user or password is left out.
struct FrontendLaunch {
    std::int32_t frontendId = 0;
    std::int32_t frontendVersionId = 0;
    Text name;
    Text accessPath;
    Text databasePath;
    Text workgroupPath;
    Text user;
    Text password;
};

/// Starts Access on front ends and tags its window once it shows one. Access may take as long as it likes:
/// its window is looked for every now and then, while everything else goes on.
class AccessLauncher {
 public:
    /// `onStarted` is called when windows have been found and tagged.
    AccessLauncher(Desktop& desktop, std::function<void()> onStarted);

    /// What stands in the way is shown to the user.
    void StartFrontend(const FrontendLaunch& launch);

    /// True while the window of a launch of this database is being waited for.
    bool IsLaunching(TextView databasePath) const;

    /// Looks for the windows now; true when one was found. `onStarted` is not called: whoever looks at the
    /// windows of the desktop asks for this first, and so meets none of ours without its tags.
    bool LookAtPendingLaunches();

 private:
    struct Pending {
        FrontendLaunch launch;
        std::unique_ptr<AccessProcess> process;
    };

    void LookAndTell();
    void OnWindowFound(const FrontendLaunch& launch, WindowHandle window);
    void Tag(const FrontendLaunch& launch, WindowHandle window);
    bool IsRegistered(WindowHandle window);

    Desktop& m_desktop;
    std::function<void()> m_onStarted;
    std::list<Pending> m_pending;
    bool m_looking = false;
    CTimer m_lookAgain;
};

}  // namespace rvl
