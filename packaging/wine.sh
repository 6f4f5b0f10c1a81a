# For scripts that run programs for Windows: a new wine prefix and a virtual display, which are gone
# when the script ends.
#
# Sourced in the project's folder, with set -e. Gives $wine, $wineserver, $DISPLAY, and $folder, an
# empty folder that is gone as well; wine's drive C is below $WINEPREFIX.
. packaging/packages.sh
packaging/install-packages "${wine_packages[@]}"
folder=$(mktemp -d)
display=
wine=$(command -v wine64 || echo /usr/lib/wine/wine64)
wineserver=$(command -v wineserver || command -v wineserver64 || echo /usr/lib/wine/wineserver64)
end_wine() {
    "$wineserver" -k 2>/dev/null || true
    [ -z "$display" ] || kill "$display" 2>/dev/null || true
    rm -rf "$folder"
}
trap end_wine EXIT
export WINEPREFIX=$folder/prefix WINEDEBUG=-all
export LC_ALL=C.UTF-8 # names of files have all letters
# No questions about downloads, and nothing in the menus of the machine.
export WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe="
exec {number}<> <(:)
Xvfb -displayfd "$number" -screen 0 1920x1200x24 2>/dev/null &
display=$!
read -r -u "$number" screen
export DISPLAY=:$screen
"$wine" wineboot -i >/dev/null 2>&1
# No window manager is there to wait for.
"$wine" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null
"$wineserver" -w
