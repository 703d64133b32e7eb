# shellcheck shell=bash
# Windows for a machine without a display: a TigerVNC server that listens on loopback alone, under a
# password made for this one session, with a window manager in it. The server ends with the program.

vnc_folder=
vnc_server=
vnc_program=

# random_password: eight characters (VNC knows no more), none that is easily misread.
random_password() {
    head -c 400 /dev/urandom | LC_ALL=C tr -dc 'A-HJ-NP-Za-km-z2-9' | cut -c 1-8
}

# listens PORT: whether somebody answers there.
listens() {
    (exec 3<>"/dev/tcp/127.0.0.1/$1") 2>/dev/null
}

# stop PID: asks it to end, and makes it end after five seconds.
stop() {
    local tries
    kill "$1" 2>/dev/null || return 0
    for ((tries = 0; tries < 50; ++tries)); do
        kill -0 "$1" 2>/dev/null || return 0
        sleep 0.1
    done
    kill -KILL "$1" 2>/dev/null
}

end_vnc() {
    set +e
    trap '' INT TERM HUP
    [[ -z $vnc_program ]] || stop "$vnc_program"
    [[ -z $vnc_server ]] || stop "$vnc_server"
    [[ -z $vnc_folder ]] || rm -rf "$vnc_folder"
}

# start_server DISPLAY: 0 when it serves, 1 when it ended, its log tells why.
start_server() {
    xauth -q -f "$XAUTHORITY" add "$1" . "$(od -An -N16 -tx1 /dev/urandom | tr -d ' \n')" 2>/dev/null
    # In a session of its own: Ctrl+C ends the program first, then the server.
    setsid Xtigervnc "$1" -auth "$XAUTHORITY" -nolisten tcp -localhost=1 -UseIPv6=0 \
        -SecurityTypes TLSVnc,VncAuth -PasswordFile "$vnc_folder/password" \
        -desktop Kelvora -geometry 1280x800 -depth 24 </dev/null >"$vnc_folder/log" 2>&1 &
    vnc_server=$!
    disown "$vnc_server"
    while kill -0 "$vnc_server" 2>/dev/null; do
        if DISPLAY=$1 timeout 5 tigervncconfig -get rfbport >/dev/null 2>&1; then
            return 0
        fi
        sleep 0.1
    done
    return 1
}

# start_on_free_display: sets DISPLAY and the port's number in vnc_port.
start_on_free_display() {
    local number
    for ((number = 1; number < 100; ++number)); do
        vnc_port=$((5900 + number))
        if [[ -e /tmp/.X$number-lock || -e /tmp/.X11-unix/X$number ]] || listens "$vnc_port"; then
            continue
        fi
        if start_server ":$number"; then
            export DISPLAY=:$number
            return 0
        fi
        # Somebody else was faster.
        grep -q -e 'in use' -e 'already active' "$vnc_folder/log" || break
    done
    [[ ! -f $vnc_folder/log ]] || cat "$vnc_folder/log" >&2
    say "The VNC server did not start."
    return 1
}

# start_window_manager: ready when it returns. A window that asks to be shown while openbox is still starting
# stays hidden for good.
start_window_manager() {
    local tries
    openbox --sm-disable --config-file "$(dirname "${BASH_SOURCE[0]}")/openbox.xml" \
        --startup "touch '$vnc_folder/managed'" </dev/null >>"$vnc_folder/log" 2>&1 &
    disown
    for ((tries = 0; tries < 100; ++tries)); do
        [[ ! -e $vnc_folder/managed ]] || return 0
        sleep 0.05
    done
    say "The window manager did not start: the windows come without frames."
}

tell_how_to_connect() {
    cat >&2 <<END

There is no display here: the windows are shown over VNC, for this machine alone.

  listens on   127.0.0.1 port $vnc_port
  password     $1
  connect      vncviewer 127.0.0.1::$vnc_port
  from afar    ssh -N -L $vnc_port:127.0.0.1:$vnc_port $(id -un)@$(uname -n)
               and, meanwhile, the same vncviewer command over there

The server ends with the program; Ctrl+C ends both.

END
}

# run_on_vnc PROGRAM [ARGUMENT...]: ends the script with the program's exit code.
run_on_vnc() {
    local password umask_before code=0
    trap end_vnc EXIT
    trap 'exit 129' HUP
    trap 'exit 130' INT
    trap 'exit 143' TERM
    umask_before=$(umask)
    umask 077
    vnc_folder=$(mktemp -d)
    export XAUTHORITY=$vnc_folder/xauthority
    password=$(random_password)
    printf '%s\n' "$password" | tigervncpasswd -f >"$vnc_folder/password"
    start_on_free_display
    umask "$umask_before"

    start_window_manager
    tell_how_to_connect "$password"
    # The shell takes standard input away from what runs in the background, unless told not to.
    QT_QPA_PLATFORM=xcb "$@" <&0 &
    vnc_program=$!
    wait "$vnc_program" || code=$?
    vnc_program=
    exit "$code"
}
