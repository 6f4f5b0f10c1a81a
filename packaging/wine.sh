# For scripts that run Windows programs: creates a new wine prefix and a virtual display, which are
# removed when the script ends.
#
# To be sourced in the project's folder, with set -e. Sets $wine, $wineserver, $DISPLAY, and
# $folder, an empty folder that is removed as well; wine's drive C is below $WINEPREFIX.
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
export LC_ALL=C.UTF-8 # file names may contain any characters
# No questions about downloads, and no entries in the desktop's menus.
export WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe="
exec {number}<> <(:)
Xvfb -displayfd "$number" -screen 0 1920x1200x24 2>/dev/null &
display=$!
read -r -u "$number" screen
export DISPLAY=:$screen
"$wine" wineboot -i >/dev/null 2>&1
# There is no window manager to wait for.
"$wine" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null
"$wineserver" -w
