#include "platform/posix/link_format.h"

#include "platform/posix/link_bytes.h"
#include "platform/posix/link_location.h"
#include "platform/posix/link_target.h"

namespace rvl::platform {
namespace {

constexpr int kPathNotFound = 3;
constexpr int kInvalidParameter = 87;

struct StoredText {
    std::uint32_t flag;
    TextView text;
};

/// Counted texts, in the order of the format. No relative path: a shortcut and the program it starts do not
/// move together.
std::string AppendTexts(const ShellLink& link, std::uint32_t& flags) {
    const StoredText texts[] = {{kHasName, link.description},
                                {kHasWorkingDirectory, link.workingDirectory},
                                {kHasArguments, link.arguments},
                                {kHasIconLocation, link.iconLocation}};
    ByteWriter writer;
    for (const auto& [flag, stored] : texts) {
        const TextView text = stored.substr(0, stored.find('\0'));
        if (text.empty()) continue;
        flags |= flag;
        writer.U16(static_cast<std::uint16_t>(text.size()));
        writer.Wide(text);
    }
    return writer.Bytes();
}

bool AllFit(const ShellLink& link) {
    for (const Text* text : {&link.description, &link.workingDirectory, &link.arguments, &link.iconLocation})
        if (text->size() > 0xFFFF) return false;
    return true;
}

std::string Header(const ShellLink& link, std::uint32_t flags) {
    const DirectoryEntry entry = EntryAt(link.target).value_or(DirectoryEntry{});
    const bool known = !entry.name.empty();
    ByteWriter header;
    header.U32(kLinkHeaderSize);
    header.Raw(kLinkClass);
    header.U32(flags);
    header.U32(entry.attributes);
    for (const FileSeconds moment : {entry.created, entry.lastAccess, entry.lastWrite})
        header.U64(known ? FileTimeOf(moment) : 0);
    header.U32(static_cast<std::uint32_t>(entry.size));
    header.U32(static_cast<std::uint32_t>(link.iconIndex));
    header.U32(static_cast<std::uint32_t>(KnownShowCommand(static_cast<std::uint32_t>(link.showCommand))));
    header.Zeros(12);  // no hot key; reserved
    return header.Bytes();
}

}  // namespace

int FormatLink(const ShellLink& link, std::string& bytes) {
    if (!AllFit(link)) return kInvalidParameter;
    std::string target;
    std::uint32_t flags = kIsUnicode;
    if (!link.target.empty()) {
        if (link.target[1] != ':') return kPathNotFound;  // a share, which this system does not have
        target = TargetItemList(link.target) + LinkLocation(link.target);
        flags |= kHasItemList | kHasLocation;
    }
    const std::string texts = AppendTexts(link, flags);
    const std::string noExtraData(4, '\0');
    bytes = Header(link, flags) + target + texts + noExtraData;
    return 0;
}

}  // namespace rvl::platform
