# The environment of Quenvolta Server for a shell: its programs, and the folder of its data.
# Sourced by the console's command prompt, which names this file's folder in QUENVOLTA_HOME.
PATH="${QUENVOLTA_HOME:-.}:$PATH"
export PATH
if [ -z "${QUENVOLTA_SERVER_DATA:-}" ]; then
    if [ "$(id -u)" -eq 0 ]; then
        QUENVOLTA_SERVER_DATA=/var/lib/quenvolta-server
    else
        QUENVOLTA_SERVER_DATA="$HOME/.local/share/quenvolta-server"
    fi
fi
export QUENVOLTA_SERVER_DATA
