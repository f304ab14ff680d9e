#pragma once

#include <map>
#include <utility>

#include "session/access_windows.h"

namespace rvl::test {

struct FakeAccess : AccessProcess {
    std::optional<std::uint32_t> ExitCode() const override { return exitCode; }
    WindowHandle MainWindow() const override { return window; }

    Text commandLine;
    std::optional<std::uint32_t> exitCode = 259;
    WindowHandle window = 0;
};

/// A desktop of windows that are plain data. What is done to a window is written down as "close 7|".
class FakeDesktop : public Desktop {
 public:
    std::map<WindowHandle, Text> classes;  ///< of all windows there are; the topmost comes last
    std::map<WindowHandle, Text> texts;
    std::map<WindowHandle, std::vector<WindowHandle>> children;  ///< for windows that may be dialogs
    std::map<WindowHandle, RunningAccess> accesses;
    std::vector<FakeAccess*> processes;  ///< gone when their windows are found
    WindowHandle foreground = 0;
    bool refusesToStart = false;
    int activationsToRegister = 0;  ///< how often an Access must be told before it can be found

    /// An Access with this database open.
    void AddAccess(WindowHandle window, const Text& database) {
        classes[window] = kAccessWindowClass;
        accesses[window] = {"11.0", "8166", database};
    }
    Text Done() { return std::exchange(m_done, ""); }

    std::vector<WindowHandle> TopLevelWindows() const override {
        std::vector<WindowHandle> handles;
        for (auto entry = classes.rbegin(); entry != classes.rend(); ++entry)
            handles.push_back(entry->first);
        return handles;
    }
    std::vector<WindowHandle> ChildWindows(WindowHandle window) const override {
        return Of(children, window);
    }
    bool IsWindow(WindowHandle window) const override { return classes.contains(window); }
    bool HasClass(WindowHandle window, TextView name) const override { return Of(classes, window) == name; }
    Text WindowText(WindowHandle window) const override { return Of(texts, window); }
    std::uint32_t Property(WindowHandle window, const char* name) const override {
        return Of(m_properties, {window, name});
    }
    void SetProperty(WindowHandle window, const char* name, std::uint32_t value) override {
        m_properties[{window, name}] = value;
    }
    WindowHandle Foreground() const override { return foreground; }
    bool BringToForeground(WindowHandle window) override { return Note("front", window), true; }
    void RequestClose(WindowHandle window) override { Note("close", window); }
    void PostQuit(WindowHandle window) override { Note("quit", window); }
    void TerminateProcessOf(WindowHandle window) override { Note("terminate", window); }

    std::optional<RunningAccess> AccessObject(WindowHandle window) const override {
        if (activationsToRegister > 0 || !accesses.contains(window)) return std::nullopt;
        return accesses.at(window);
    }
    void AskToRegister(WindowHandle window) override { Note("register", window); }
    void PretendActivation(WindowHandle window) override {
        --activationsToRegister;
        Note("activate", window);
    }
    std::unique_ptr<AccessProcess> Start(const Text& commandLine) override {
        auto process = refusesToStart ? nullptr : std::make_unique<FakeAccess>();
        if (process) processes.push_back(process.get()), process->commandLine = commandLine;
        return process;
    }

 private:
    template <typename Map>
    static typename Map::mapped_type Of(const Map& map, const typename Map::key_type& key) {
        const auto found = map.find(key);
        return found == map.end() ? typename Map::mapped_type() : found->second;
    }
    void Note(const Text& what, WindowHandle window) { m_done += what + " " + HandleText(window) + "|"; }

    std::map<std::pair<WindowHandle, Text>, std::uint32_t> m_properties;
    Text m_done;
};

}  // namespace rvl::test
