#include "tools/deployserver/history_file.h"

#include <algorithm>

#include "platform/error.h"
#include "runtime/file.h"
#include "tools/deployserver/line_breaks.h"
#include "util/text_functions.h"

namespace rvl::deployserver {
namespace {

enum Field { kFrontendId, kVersionId, kLabel, kDate, kRevoked, kNotes };

Text ReadText(const Text& path) {
    File file;
    file.OpenFile(path, platform::FileAccess::Read, platform::FileShare::ReadWrite,
                  platform::FileDisposition::OpenExisting);
    return file.Length() == 0 ? Text() : TextFromUtf8(file.ReadData(file.Length()));
}

bool HasForm(TextView text, TextView form) {
    return std::equal(text.begin(), text.end(), form.begin(), form.end(), [](char given, char expected) {
        return expected == '0' ? given >= '0' && given <= '9' : given == expected;
    });
}

bool IsDate(TextView text) {
    return HasForm(text, "0000-00-00") || HasForm(text, "0000-00-00 00:00:00");
}

[[noreturn]] void Raise(const Text& path, std::int64_t line, const Text& problem) {
    throw Error(kApplicationErrorBase + 1, "HistoryFile",
                "line " + NumberText(line) + " of \"" + path + "\" " + problem);
}

/// Why the fields make no entry; empty when they do.
Text ProblemOf(const std::vector<TextView>& fields) {
    if (fields.size() < kNotes || fields.size() > kNotes + 1)
        return "has " + NumberText(static_cast<std::int64_t>(fields.size())) + " fields between tabs, not 6";
    if (ParseLongOr(fields[kFrontendId], 0) < 1 || ParseLongOr(fields[kVersionId], 0) < 1)
        return "does not begin with two numbers from 1 on";
    if (!IsDate(fields[kDate])) return "has a date that is not like 2024-12-31 or 2024-12-31 23:59:59";
    if (fields[kRevoked] != "0" && fields[kRevoked] != "1") return "says neither 1 nor 0 for revoked";
    return "";
}

HistoryEntry EntryOf(const std::vector<TextView>& fields) {
    return {ParseLongOr(fields[kFrontendId], 0),
            ParseLongOr(fields[kVersionId], 0),
            Text(fields[kLabel]),
            Text(fields[kDate]),
            fields[kRevoked] == "1",
            fields.size() > kNotes ? WithLineBreaks(fields[kNotes]) : Text()};
}

}  // namespace

std::vector<HistoryEntry> ReadHistoryFile(const Text& path) {
    const Text text = ReadText(path);
    std::vector<HistoryEntry> entries;
    std::int64_t number = 0;
    for (TextView line : SplitAt(text, "\n")) {
        ++number;
        if (line.ends_with('\r')) line.remove_suffix(1);
        if (line.empty() || line.starts_with('#')) continue;
        const auto fields = SplitAt(line, "\t");
        if (const Text problem = ProblemOf(fields); !problem.empty()) Raise(path, number, problem);
        entries.push_back(EntryOf(fields));
    }
    return entries;
}

}  // namespace rvl::deployserver
