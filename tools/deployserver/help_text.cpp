#include "tools/deployserver/options.h"

namespace rvl::deployserver {
namespace {

constexpr const char* kGeneral =
    "Usage: deployserver [OPTION]...\n"
    "A small deployment server to try workstation clients with: it lets them find it, logs them in, pushes "
    "a\n"
    "file to each of them, publishes, deploys and removes a front-end version, and updates the clients.\n"
    "\n"
    "  --port=N             listen on TCP and UDP port N of all interfaces (default: 16378, where clients\n"
    "                       look for their server)\n"
    "  --name=TEXT          the server's name in its LOCATE_REPLY (default: the name of this computer)\n"
    "  --no-locate          do not open the UDP port: leave LOCATE to other servers\n"
    "  --once               end when all that is to be done with one workstation has come to its end\n"
    "                       and none is awaited back from its update\n"
    "  --quiet              print only that the server listens, what the work came to, and refusals\n"
    "  --help, --version    print this text, or the version, and end\n";

constexpr const char* kTransfer =
    "\nA file:\n"
    "  --push=LOCALFILE     push this file to every workstation that logs in; needs --to\n"
    "  --to=PATH            where the workstation stores it, such as 'C:\\Data\\front end.mdb'\n"
    "\nTransfers, of --push, --publish and --update:\n"
    "  --piece=BYTES        bytes per FILE_DATA message, 1 to 515000 (default 262144): with its header it\n"
    "                       has to fit the client's input buffer of 524288 characters\n"
    "  --no-resume          have the client begin at 0 even when it holds a part of the file\n"
    "  --cut-after=BYTES    cut the link once, when this many bytes of files were sent, all workstations\n"
    "                       together; a part that is not acknowledged yet may be lost\n"
    "  --cut-how=HOW        close: close the connection; the client comes back after its retry interval,\n"
    "                       30 seconds when it found the server by broadcast (default)\n"
    "                       findagain: send FIND_SERVER_AGAIN, upon which the client drops the link and\n"
    "                       locates the server anew, at once\n";

constexpr const char* kVersion =
    "\nA front-end version:\n"
    "  --publish=FOLDER     make all files below this folder known as a version to every workstation that\n"
    "                       logs in: announce it, push what is missing or differs, confirm it\n"
    "  --frontend-id=N      number of the front end (default 1)\n"
    "  --version-id=N       number of the version, larger for a newer one (default 1). A version that a\n"
    "                       workstation has completely is not announced again: what is described anew\n"
    "                       needs a new number\n"
    "  --frontend-name=TEXT its name (default: the folder's)\n"
    "  --main=FILE          its main file, relative to the folder (default: the only *.mdb, *.mde or\n"
    "                       *.accdb at the top of the folder)\n"
    "  --version-label=TEXT the version as users see it (default: its number)\n"
    "  --access-versions=L  versions of Access that may open it, such as 8,9 (default: any)\n"
    "  --mdw=PATH           workgroup information file on the workstation (default: none)\n"
    "  --icon=FILE          icon file, relative to the folder (default: none)\n"
    "  --desktop-icon=NAME  name of the shortcut on the desktop, empty for none (default: the front end's)\n"
    "  --menu-icon=NAME     name of the shortcut in the Start menu, likewise\n"
    "  --destination=PLACE  where users get their copies: user_profile (default), program_files or custom\n"
    "  --custom-folder=PATH the folder of --destination=custom\n"
    "  --staging=PATH       folder on the workstation below which files are received, in "
    "FRONTEND\\VERSION\\\n"
    "                       (default: Ravelin\\Client\\Staging\\ below its common application data)\n";

constexpr const char* kOrders =
    "\nWhat is to become of the version, for users such as 'OFFICE\\ann'; without --publish --version-id has "
    "to\n"
    "name it. All but --verify and --report may be repeated, they are done in the order given, after the\n"
    "version has been published; what a workstation reports as done already is left out:\n"
    "  --deploy-to=USER     deploy it with its files\n"
    "  --available-to=USER  make it available without its files\n"
    "  --remove-from=USER   remove it\n"
    "  --remove-template    remove the workstation's own copy; nobody's deployment\n"
    "  --verify             afterwards have the workstation log in again (FIND_SERVER_AGAIN), unless its\n"
    "                       report shows everything done already, and judge by the new report; what is not\n"
    "                       complete is done once more\n"
    "  --report             wait for the workstation's report and print it even with --quiet\n";

constexpr const char* kUpdate =
    "\nThe client itself, last of all that is to be done:\n"
    "  --update=LOCALFILE   push this executable, have the client replace itself by it, and wait until the\n"
    "                       workstation logs in with another version than before\n"
    "  --update-to=PATH     where the workstation receives it (default: Ravelin\\Client\\Update\\ and the\n"
    "                       name of the file below its common application data)\n"
    "  --update-version=V   the version to wait for, such as 1.1.4; a workstation that has it is left alone\n"
    "  --update-timeout=N   seconds until a workstation counts as lost, 1 to 86400 (default 180)\n";

constexpr const char* kPeople =
    "\nUsers, answered and told about as long as they are connected (all may start what is not denied):\n"
    "  --history=FILE       what switchboards show as version histories, besides the version published: a\n"
    "                       file (UTF-8) of one line per version, with tabs between front-end id, version\n"
    "                       id, version, date (2024-12-31 or 2024-12-31 23:59:59), revoked (1 or 0) and\n"
    "                       notes; empty lines and those that begin with # are left out\n"
    "  --deny=N             let nobody start front end N; may be repeated\n"
    "  --deny-text=TEXT     what those are told who try; \\n begins a new line (default: a general "
    "sentence)\n"
    "  --orders             take orders from standard input, one per line; when it ends, serve on. Not with\n"
    "                       --once. The answers are lines on standard output; NOT DONE and NOT UNDERSTOOD\n"
    "                       begin those that say why nothing was sent\n"
    "\nOrders. Words are separated by spaces; one that holds spaces stands in double quotes, within which "
    "\"\"\n"
    "is a quote. USER is such as OFFICE\\ann, or * for everybody. In TEXT, as in the notes of a history, \\n "
    "is\n"
    "a line break and \\\\ a backslash:\n"
    "  close USER FRONTEND SECONDS [no-continue] TEXT\n"
    "                       show TEXT (HTML) and count down, then close the front end, wherever the user "
    "has\n"
    "                       it open; no-continue: the user cannot stop that; 0 seconds: at once\n"
    "  message helper|switchboard USER TEXT [TITLE [STYLE]]\n"
    "                       have the user's helper, or switchboards, show a message box (default style 64)\n"
    "  start USER FRONTEND  have the user's helper start the front end\n"
    "  updated FRONTEND     have switchboards load its history again; reads the file of --history anew\n"
    "  deny FRONTEND [TEXT] let nobody start it from now on\n"
    "  allow FRONTEND       let users start it again\n"
    "  stop                 end the server\n";

constexpr const char* kRemarks =
    "\n"
    "An option's value may also be the next argument. Every protocol step is one line on standard output,\n"
    "beginning with its name; #N is the number of the connection. NUL is shown as |, other control\n"
    "characters as \\xHH. What the connections log goes to deployserver.log beside the program.\n"
    "\n"
    "A workstation that lost its link gets everything again at its next login, resumes the file that was on\n"
    "its way and is spared what it has by then. What fails for one of several users does not keep the "
    "others\n"
    "waiting; any other failure ends the work with that workstation until its next login.\n"
    "SIGTERM and SIGINT end the server.\n"
    "\n"
    "Exit status: 0 ended by a signal, or with --once everything succeeded: the digest of each pushed file\n"
    "matched, no command was answered with an error, with --verify the new report shows everything done,\n"
    "each workstation that was updated came back with the new version;\n"
    "1 something failed, or the server was ended before it was done (both with --once), or it cannot "
    "listen,\n"
    "read a file or publish the folder; 2 wrong usage.\n";

}  // namespace

Text HelpText() {
    return Text(kGeneral) + kTransfer + kVersion + kOrders + kUpdate + kPeople + kRemarks;
}

}  // namespace rvl::deployserver
