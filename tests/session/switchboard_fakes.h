#pragma once

#include <algorithm>
#include <functional>
#include <utility>

#include "session/service_connection.h"
#include "session/start_frontend_view.h"
#include "session/switchboard_view.h"
#include "util/text_functions.h"

namespace rvl::test {

/// The connection of a local process, moved by the test. Messages are written "COMMAND|parameter|parameter".
struct ScriptedConnection : ServiceConnection {
    void Connect(ConnectionOwner& to) override { owner = &to; }
    void Close() override { closed = true, connected = false; }
    bool IsConnected() const override { return connected; }
    void SendData(const Text& command, const std::vector<Text>& params) override {
        sent += command;
        for (const Text& param : params)
            sent += "|" + param;
        sent += "\n";
        if (onSend) std::exchange(onSend, {})();
    }

    void Establish() { connected = true, owner->OnConnected(); }
    void Lose() {
        connected = false;
        if (!closed) owner->OnConnectionLost();
    }
    void Fail() {
        if (!closed) owner->OnConnectFailed();
    }
    void Hear(const Text& message) {
        const std::vector<TextView> words = SplitAt(message, "|");
        if (!closed) owner->OnMessage(Text(words[0]), {words.begin() + 1, words.end()});
    }
    Text Sent() { return std::exchange(sent, ""); }

    ConnectionOwner* owner = nullptr;
    bool connected = false, closed = false;
    Text sent;
    std::function<void()> onSend;  ///< once
};

/// What a switchboard's window would show.
struct ShownSwitchboard : SwitchboardView {
    void Show() override { forms.push_back("frmClientMain"); }
    void SetCaption(const Text& text) override { caption = text, ++calls; }
    Tab ShownTab() const override { return tab; }
    void SetBusyPointer(bool isBusy) override { busy = isBusy, ++calls; }
    void ClearFrontends() override { items.clear(); }
    void AddFrontend(const FrontendItem& item) override {
        const auto& [id, name, version, icon] = item;
        items.emplace_back(id, Text(name).append("|").append(version).append("|").append(icon));
        ++calls;
    }
    void RemoveFrontend(std::int32_t frontendId) override {
        std::erase_if(items, [&](const auto& item) { return item.first == frontendId; });
    }
    void EnableAdvanced(bool isEnabled) override { enabled = isEnabled, ++calls; }
    void ShowHistory(const std::vector<VersionHistoryRow>& rows) override {
        history.clear(), ++calls;
        for (const auto& [version, date, notes, revoked] : rows)
            history.append(version + "|").append(date + "|").append(notes + (revoked ? "|revoked\n" : "\n"));
    }
    std::vector<Text> LoadedForms() const override { return forms; }
    void UnloadForm(const Text& name) override {
        if (!stays || !stays(name)) std::erase(forms, name);
    }

    Text caption, history;
    Tab tab = Tab::Switchboard;
    bool busy = false, enabled = true;
    int calls = 0;
    std::vector<std::pair<std::int32_t, Text>> items;
    std::vector<Text> forms;
    std::function<bool(const Text&)> stays;
};

struct ShownStartFrontend : StartFrontendView {
    void SetCaption(const Text& text) override { shown += text + "|"; }
    void SetMessage(const Text& text) override { shown += text; }
    void Show() override { shown += "|shown"; }
    void Unload() override { ++unloaded; }

    Text shown;
    int unloaded = 0;
};

}  // namespace rvl::test
