# How ./package and .ci/run build for Windows and run what was built. Needs common.sh.

need_windows_tools() {
    need g++-mingw-w64-x86-64-posix wine64 cmake ninja-build libcli11-dev nlohmann-json3-dev libtomlplusplus-dev libeigen3-dev
    # Its own Windows in build/, which needs neither .NET nor a browser, and does not talk.
    export WINEPREFIX="$builds/wine" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml=" WINEARCH=win64
    wine=$(PATH="$PATH:/usr/lib/wine" command -v wine64) || die "there is no wine64"
    [[ -e $WINEPREFIX/system.reg ]] || quietly "$builds/wine.log" "$wine" wineboot -i || die "Wine cannot make its folder"
}
