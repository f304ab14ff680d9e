// Reads and writes the registry of this workstation from the command line.

#include <array>
#include <charconv>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "platform/error.h"
#include "platform/latin1_case.h"
#include "platform/process.h"
#include "platform/registry.h"

namespace {

using namespace rvl;
using namespace rvl::platform;

enum ExitStatus { kDone = 0, kMissing = 1, kWrongUsage = 2, kFailed = 3 };

constexpr const char* kUsage =
    "usage: rvlreg get KEY VALUE\n"
    "       rvlreg set KEY VALUE text|number DATA\n"
    "       rvlreg delete KEY [VALUE]\n"
    "       rvlreg list [KEY]\n"
    "KEY begins with HKLM, HKCU, HKU or HKCR, such as HKLM\\SOFTWARE\\Ravelin\\Client.\n"
    "An empty VALUE names the default value of the key. Numbers are decimal, 0 to 4294967295.\n"
    "exit status: 0 done, 1 the key or value is missing, 2 wrong usage, 3 any other failure\n";

struct WrongUsage {};

struct RootName {
    const char* name;
    RegistryRoot root;
};

constexpr std::array<RootName, 4> kRoots{{{"HKCR", RegistryRoot::ClassesRoot},
                                          {"HKCU", RegistryRoot::CurrentUser},
                                          {"HKLM", RegistryRoot::LocalMachine},
                                          {"HKU", RegistryRoot::Users}}};

struct Key {
    Text spelling;  ///< as given, without a trailing backslash
    RegistryRoot root;
    Text path;  ///< below the root
};

Key ParseKey(Text spelling) {
    while (!spelling.empty() && spelling.back() == '\\')
        spelling.pop_back();
    const std::size_t end = std::min(spelling.find('\\'), spelling.size());
    const Text name = LowerLatin1(TextView(spelling).substr(0, end));
    for (const RootName& candidate : kRoots)
        if (LowerLatin1(TextView(candidate.name)) == name)
            return {spelling, candidate.root, spelling.substr(end)};
    throw WrongUsage();
}

RegistryValue ParseData(const Text& type, const Text& data) {
    if (type == "text") return data;
    std::uint32_t number = 0;
    const char* end = data.data() + data.size();
    const auto [parsed, problem] = std::from_chars(data.data(), end, number);
    if (type != "number" || problem != std::errc() || parsed != end) throw WrongUsage();
    return number;
}

/// Expandable text as it is stored: what its names stand for differs from process to process.
Text DataText(const RegistryValue& value) {
    if (const auto* number = std::get_if<std::uint32_t>(&value)) return std::to_string(*number);
    if (const auto* expandable = std::get_if<ExpandableText>(&value)) return expandable->text;
    return std::get<Text>(value);
}

Text ListedText(const RegistryValue& value) {
    return DataText(value) + (std::holds_alternative<ExpandableText>(value) ? " (expandable)" : "");
}

void PrintLine(const Text& line) {
    const std::string utf8 = Utf8FromText(line) + "\n";
    std::fwrite(utf8.data(), 1, utf8.size(), stdout);
}

int ReportMissing(const Text& what) {
    std::fprintf(stderr, "rvlreg: %s is missing\n", Utf8FromText(what).c_str());
    return kMissing;
}

using Arguments = std::vector<Text>;

int Get(const Arguments& arguments) {
    const Key key = ParseKey(arguments[0]);
    const auto value = ReadRegistry(key.root, key.path, arguments[1]);
    if (!value) return ReportMissing("the value " + arguments[1] + " of " + key.spelling);
    PrintLine(DataText(*value));
    return kDone;
}

int Set(const Arguments& arguments) {
    const Key key = ParseKey(arguments[0]);
    WriteRegistry(key.root, key.path, arguments[1], ParseData(arguments[2], arguments[3]));
    return kDone;
}

int Delete(const Arguments& arguments) {
    const Key key = ParseKey(arguments[0]);
    if (arguments.size() == 1)
        return DeleteRegistryKey(key.root, key.path) ? kDone : ReportMissing(key.spelling);
    if (DeleteRegistryValue(key.root, key.path, arguments[1])) return kDone;
    return ReportMissing("the value " + arguments[1] + " of " + key.spelling);
}

int ListRoots() {
    for (const RootName& root : kRoots)
        PrintLine(Text(root.name) + "\\");
    return kDone;
}

/// Subkeys first, each kind in alphabetical order.
int List(const Arguments& arguments) {
    if (arguments.empty()) return ListRoots();
    const Key key = ParseKey(arguments[0]);
    if (!RegistryKeyExists(key.root, key.path)) return ReportMissing(key.spelling);
    for (const Text& subkey : RegistrySubkeys(key.root, key.path))
        PrintLine(key.spelling + "\\" + subkey + "\\");
    for (const Text& name : RegistryValueNames(key.root, key.path))
        if (const auto value = ReadRegistry(key.root, key.path, name))
            PrintLine((name.empty() ? "(default)" : name) + " = " + ListedText(*value));
    return kDone;
}

struct Command {
    const char* name;
    std::size_t fewest, most;  ///< arguments
    int (*run)(const Arguments&);
};

constexpr std::array<Command, 4> kCommands{
    {{"get", 2, 2, Get}, {"set", 4, 4, Set}, {"delete", 1, 2, Delete}, {"list", 0, 1, List}}};

int Run(const Text& name, const Arguments& arguments) {
    for (const Command& command : kCommands)
        if (name == command.name && arguments.size() >= command.fewest && arguments.size() <= command.most)
            return command.run(arguments);
    throw WrongUsage();
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const Arguments arguments = platform::ProgramWords(argc, argv);
        if (arguments.empty()) throw WrongUsage();
        const int status = Run(arguments[0], {arguments.begin() + 1, arguments.end()});
        return std::fflush(stdout) == 0 ? status : kFailed;
    } catch (const WrongUsage&) {
        std::fputs(kUsage, stderr);
        return kWrongUsage;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "rvlreg: %s\n", Utf8FromText(error.what()).c_str());
        return kFailed;
    }
}
