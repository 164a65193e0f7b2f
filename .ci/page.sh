# How ./page and web/test build the page. Needs common.sh.

page_file="$root/build/page/index.html"
core_file="$builds/wasm/web/core/keltrix-core.wasm"

# Whether there is emscripten, or Debian could bring it.
has_emscripten() {
    command -v em++ >/dev/null 2>&1 || { command -v apt-cache >/dev/null 2>&1 && apt-cache show emscripten >/dev/null 2>&1; }
}

need_page_tools() {
    need emscripten cmake ninja-build nlohmann-json3-dev libtomlplusplus-dev libeigen3-dev libfast-float-dev libfmt-dev
    command -v npm >/dev/null 2>&1 || need nodejs npm
}

# It takes seconds, or waits for ever for a network that does not reply. Node.js trusts the authorities of the system only when it is told so.
install_page_tools() {
    local authorities=/etc/ssl/certs/ca-certificates.crt
    [[ ! -e $authorities ]] || export NODE_EXTRA_CA_CERTS="${NODE_EXTRA_CA_CERTS:-$authorities}"
    quietly "$builds/page.install.log" timeout 180 npm --prefix "$root/web/page" install --no-save --ignore-scripts
}

# The core as WebAssembly, then the page around it. Unity builds in any case: em++ spends its time in headers.
build_page() {
    local modules="$root/web/page/node_modules"
    need_page_tools
    lock wasm
    [[ -e $builds/wasm/build.ninja ]] || say "first build, takes some minutes (log: build/wasm.build.log)"
    unity=ON configure wasm "-DCMAKE_TOOLCHAIN_FILE=$(em-config EMSCRIPTEN_ROOT)/cmake/Modules/Platform/Emscripten.cmake" || die "configuring failed"
    quietly "$builds/wasm.build.log" cmake --build "$builds/wasm" --target keltrix-core || die "the build failed"
    # Not "ci", which wants packages of other systems in the lock file as well.
    if ! cmp -s "$root/web/page/package-lock.json" "$modules/.installed"; then
        install_page_tools || install_page_tools || die "npm could not install what the page is made with"
        cp "$root/web/page/package-lock.json" "$modules/.installed"
    fi
    KELTRIX_CORE="$core_file" KELTRIX_PAGE_OUT="$root/build/page" \
        quietly "$builds/page.build.log" npm --prefix "$root/web/page" run build || die "the page could not be built"
    unlock
}
