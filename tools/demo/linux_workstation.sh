# The demo's workstation for the Linux programs: a folder stands for its drives, two users share it. Sourced by ./demo.

preset=release
packages=build
users=(ann bob)
logon="the helpers of two users log in"
to_everybody="to both users"
helpers_connect="the helpers connect again by themselves"
helpers_leave="the two helpers"
service=
other_display=

# Runs this script again inside a network of its own: the ports are fixed and LOCATE is a broadcast.
enter_private_place() {
    local unshare=(unshare --net)
    if [ "$(id -u)" -ne 0 ]; then unshare=(unshare --map-root-user --net); fi
    if "${unshare[@]}" true 2>/dev/null; then
        exec "${unshare[@]}" bash -c 'ip link set lo up && exec "$0" --show' ./demo
    fi
    exec ./demo --show
}

prepare_workstation() {
    workstation=$(mktemp -d)
    client="$workstation/app/RVLClient"
    next_client=build/release/tests/RVLClient-next
    mkdir -p "$workstation/app"
    cp build/release/bin/* "$workstation/app/"
    export RVL_ROOT="$workstation/root" RVL_DOMAIN=OFFICE
    log="$workstation/app/RVLClient.log"
    drive="$RVL_ROOT/drive_c"
    data="$drive/ProgramData/Ravelin/Client"
    install_access "$drive/Program Files/Microsoft Office/Office11" build/release/bin/msaccess
    start_display start_openbox
}

# What runs from the workstation, also what the programs have started themselves.
ours() {
    local process
    for process in /proc/[0-9]*; do
        case "$(readlink "$process/exe" 2>/dev/null)" in "$workstation"/*) basename "$process" ;; esac
    done
}

end_workstation() {
    local pid
    control -stop >/dev/null 2>&1 || true
    for pid in $(ours); do
        kill -TERM "$pid" 2>/dev/null || continue
        wait "$pid" 2>/dev/null || true
    done
    sleep 0.3
    for pid in $(ours); do kill -KILL "$pid" 2>/dev/null || true; done
}

home() { echo "$drive/Users/$1"; }

# argument PATH: how the programs are told of a path of the host.
argument() { echo "$1"; }

# as USER [ARGUMENT...]: runs the client.
as() { RVL_USER=$1 "$client" "${@:2}"; }

run_server() { exec "$workstation/app/deployserver" "$@"; }

# Its boxes go to standard error.
control() { env -u DISPLAY "$client" "$1"; }

start_service() {
    "$client" -service_mode &
    service=$!
}

stop_service() {
    kill -TERM "$service"
    wait "$service" && code=0 || code=$?
    service=
}

# The helper of each user comes with the logon; each has a desktop of his own.
start_helpers() {
    if [ -z "$other_display" ]; then
        start_x_server
        other_display=$started
    fi
    as ann -service_helper 2>/dev/null &
    DISPLAY=$other_display as bob -service_helper 2>/dev/null &
}

install_service() {
    control -install
    control -start
}

remove_service() {
    control -stop
    until control -stop 2>&1 | grep -q 'not been started'; do sleep 0.2; done
    control -remove
}

show_rights() { getfacl -cp "$1" | sed '/^$/d; s/^/    rights | /'; }

# The shortcut's own command line.
open_shortcut() {
    lnkinfo "$1" | sed -n 's/^[[:space:]]*Command line arguments[[:space:]]*: //p' >"$workstation/arguments"
    RVL_USER=ann xargs "$client" <"$workstation/arguments"
}
