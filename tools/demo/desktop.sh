# The desktops of the demo: displays of their own where there is none, and pictures of the windows. Sourced by ./demo.

displays=

# Starts an X server; its name is left in `started`.
start_x_server() {
    local number
    rm -f "$workstation/display"
    mkfifo "$workstation/display"
    Xvfb -displayfd 9 -screen 0 1024x768x24 -nolisten tcp -noreset 9>"$workstation/display" 2>/dev/null &
    displays="$! $displays"
    read -r number <"$workstation/display"
    started=":$number"
}

# start_display [COMMAND]: one with the window manager that the command starts, which Windows does without.
start_display() {
    if [ -n "${DISPLAY:-}" ] && xdpyinfo >/dev/null 2>&1; then return; fi
    start_x_server
    export DISPLAY=$started
    xsetroot -solid '#3a6ea5'
    "$@"
}

start_openbox() {
    echo '<openbox_config xmlns="http://openbox.org/3.4/rc"/>' >"$workstation/openbox.xml"
    openbox --config-file "$workstation/openbox.xml" >/dev/null 2>&1 &
    displays="$! $displays"
}

stop_displays() {
    local pid
    for pid in $displays; do
        kill "$pid" 2>/dev/null || continue
        wait "$pid" 2>/dev/null || true
    done
}

window_of() { xdotool search --onlyvisible --name "$1" 2>/dev/null | tail -1; }

# wait_window TITLE: until it shows (a regular expression).
wait_window() {
    local tries=150
    until [ -n "$(window_of "$1")" ]; do
        tries=$((tries - 1))
        if [ "$tries" -le 0 ]; then
            echo "demo: no window \"$1\"" >&2
            return 1
        fi
        sleep 0.1
    done
}

wait_no_window() {
    local tries=300
    while [ -n "$(window_of "$1")" ] && [ "$tries" -gt 0 ]; do
        tries=$((tries - 1))
        sleep 0.1
    done
}

# picture FILE TITLE: what the window of this title looks like.
picture() {
    wait_window "$2"
    sleep 0.7 # it has painted itself
    local window
    window=$(window_of "$2")
    import -silent -frame -window "${window:?"$2" has gone}" "$pictures/$1.png"
    echo "    picture | $pictures/$1.png" | tee -a "$workstation/shown"
}

# keys TITLE KEY...: typed into the window of this title.
keys() {
    local title=$1
    shift
    xdotool windowfocus "$(window_of "$title")"
    sleep 0.3
    for key in "$@"; do
        xdotool key --clearmodifiers "$key"
        sleep 0.2
    done
}
