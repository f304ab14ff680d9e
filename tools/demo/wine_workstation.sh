# The demo's workstation for the Windows programs: a Wine prefix of its own, on which ann works. Sourced by ./demo.

preset=windows
packages=windows
users=(ann) # who runs under Wine is always the same person
logon="the helper of ann logs in, under Wine the only user"
to_everybody="to ann"
helpers_connect="the helper connects again by itself"
helpers_leave="the helper"

# Runs this script again where everything is its own: the network, because the ports are fixed and LOCATE is a broadcast;
# the names of the user and the computer, which Wine has from the system; and the processes, of which none stays.
enter_private_place() {
    local unshare=(unshare --net --mount --uts --pid --fork --kill-child --mount-proc)
    if [ "$(id -u)" -ne 0 ]; then unshare+=(--map-root-user); fi
    if ! "${unshare[@]}" true 2>/dev/null; then
        echo "demo: the system grants no namespaces; the Windows programs need them" >&2
        exit 1
    fi
    trap '' HUP # it would end unshare, and with it everything before it could tidy up
    # shellcheck disable=SC2016
    exec "${unshare[@]}" bash -c '
        ip link set lo up
        passwd=$(mktemp)
        { echo "ann:x:0:0:Ann:/nonexistent:/bin/sh"; grep -v "^[^:]*:[^:]*:0:" /etc/passwd; } >"$passwd"
        mount --bind "$passwd" /etc/passwd
        rm "$passwd"
        hostname OFFICE
        exec "$0" --show-windows' ./demo
}

# The files are shared with the template, except for those that Wine writes into.
clone_prefix() {
    local template
    template=$(tools/windows/wine-prefix)
    workstation=$(mktemp -d -p "$(dirname "$template")")
    export WINEPREFIX="$workstation/root"
    cp -al "$template" "$WINEPREFIX"
    find "$WINEPREFIX" -maxdepth 1 -type f -delete
    cp -p "$template"/{system.reg,user.reg,userdef.reg,.update-timestamp} "$WINEPREFIX/"
}

wine() { /usr/lib/wine/wine64 "$@"; }

prepare_workstation() {
    clone_prefix
    export WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d" LC_ALL=C.UTF-8 HOME=/nonexistent
    unset DISPLAY # the desktop of whoever runs this knows neither ann nor OFFICE
    start_display
    drive="$WINEPREFIX/drive_c"
    data="$drive/ProgramData/Ravelin/Client"
    client="$drive/Program Files/Ravelin/Client/RVLClient.exe"
    next_client=build/windows/tests/RVLClient-next.exe
    log="${client%.exe}.log"
    mkdir -p "$(dirname "$client")"
    cp build/windows/bin/* "$(dirname "$client")/"
    install_access "$drive/Program Files/Microsoft Office/Office11" build/windows/bin/msaccess.exe
    wineserver --persistent >/dev/null 2>&1
    wine wineboot >/dev/null 2>&1
}

end_workstation() {
    wine "$client" -remove-silent >/dev/null 2>&1 || true
    wineserver --kill || true
    wineserver --wait
}

home() { echo "$drive/users/$1"; }

# argument PATH: how the programs are told of a path of the host.
argument() { echo "Z:${1//\//\\}"; }

# as USER [ARGUMENT...]: runs the client.
as() { wine "$client" "${@:2}"; }

run_server() { exec /usr/lib/wine/wine64 "$(dirname "$client")/deployserver.exe" "$@"; }

# control SWITCH [PICTURE]: as an administrator does, who is told by a box that he answers.
control() {
    local box
    wine "$client" "$1" 2>/dev/null &
    box=$!
    wait_window "^Ravelin Client$"
    if [ $# -gt 1 ]; then picture "$2" "^Ravelin Client$"; fi
    keys "^Ravelin Client$" Return
    wait "$box"
    echo "    box    | $1: $(sed -n 's/\r$//; s/^.*MsgBox: "\(.*\)": OK$/\1/p' "$log" | tail -1)"
}

manager() { wine sc "$@" RVLClient | tr -d '\r'; }

# Windows registers the service with the first start; the manager starts it then and ever after.
start_service() {
    if manager query | grep -q STATE; then
        control -start
    else
        wine "$client" -install-silent
        show_registration
    fi
}

show_registration() {
    local key='HKLM\SYSTEM\CurrentControlSet\Services\RVLClient'
    { wine reg query "$key"; wine reg query 'HKLM\Software\Microsoft\Windows\CurrentVersion\Run' /v RVLClientHelper; } |
        sed -nE 's/\r$//; s/^ +(DisplayName|ImagePath|ObjectName|Start|RVLClientHelper) +REG_[A-Z_]+ +/    registry | \1 = /p'
}

wait_stopped() { until manager query | grep -q STOPPED; do sleep 0.2; done; }

stop_service() {
    control -stop
    wait_stopped
    code=$(manager query | sed -n 's/^.*WIN32_EXIT_CODE *: \([0-9]*\).*/\1/p')
}

# The helper comes with the logon.
start_helpers() { as ann -service_helper 2>/dev/null & }

install_service() {
    wine "$client" -remove-silent
    control -install service-installed
    control -start service-started
}

remove_service() {
    control -stop
    wait_stopped
    wine "$client" -remove-silent
    if manager query | grep -q STATE; then return 1; fi
    echo "    the service manager does not know it any more"
}

# All that Wine keeps of the rights of a file is what Unix has.
show_rights() { stat -c '    rights | %A, which is what Wine keeps of them: the owner, his groups, everybody else' "$1"; }

# Windows opens it.
open_shortcut() { wine start /wait /unix "$1"; }
