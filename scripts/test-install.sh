#!/usr/bin/env bash
# Checks what integrators and plugin authors get: `cmake --install` of the build into a temporary
# prefix, no path into the source or build tree in the installed files, the desktop entry, the
# installed configuration passing `linkdeck --check-config`, the example plugin built out of tree against the prefix and loaded by the installed application,
# pkg-config, and the Debian package unpacked and started. Reuses ${BUILD_DIR:-build}.
set -euo pipefail
cd "$(dirname "$0")/.."
started=$SECONDS
src_dir=$(pwd -P)
build_dir=${BUILD_DIR:-build}

fail() { printf 'test-install: FAIL: %s\n' "$*" >&2; exit 1; }
step() { printf '\n-- test-install: %s\n' "$*"; }
# Runs an installed linkdeck offscreen with a private settings file and the core's debug lines.
run_linkdeck() {
    local exe=$1 log=$2
    shift 2
    (cd "$tmp" && env -u LD_LIBRARY_PATH QT_QPA_PLATFORM=offscreen \
        LINKDECK_SETTINGS="$tmp/settings-$RANDOM.ini" \
        QT_LOGGING_RULES='*.debug=true;qt.*.debug=false' \
        "$exe" --no-splash "$@") >"$log" 2>&1
}
# The installed application's own configuration check must find nothing.
check_config() {
    env -u LD_LIBRARY_PATH "$prefix/bin/linkdeck" --check-config >"$tmp/check.log" 2>&1 ||
        { cat "$tmp/check.log" >&2; fail "linkdeck --check-config $1"; }
    echo "linkdeck --check-config: no problem $1"
}
# Fails unless the log has a line matching the extended regular expression.
require_line() {
    local log=$1 pattern=$2 what=$3
    grep -E -m1 -- "$pattern" "$log" || { tail -n 40 "$log" >&2; fail "$what (no line matching '$pattern' in $log)"; }
}

tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
prefix=$tmp/prefix

step "(a) build and install into $prefix"
bash scripts/build.sh >"$tmp/build.log" 2>&1 || { tail -n 40 "$tmp/build.log" >&2; fail "build"; }
build_abs=$(cd "$build_dir" && pwd -P)
cmake --install "$build_dir" --prefix "$prefix" >"$tmp/install.log" || fail "cmake --install"
for f in lib/libcore.so.1.0.0 lib/libsdk.so.1.0.0 include/linkdeck/PluginContainer.h \
         include/linkdeck/NexoSdk.h lib/linkdeck/linkdeck lib/linkdeck/libXFramePlugin.so \
         lib/linkdeck/config/pluginslib.xml lib/linkdeck/skin/IDS_SKIN_DEFAULT.qss \
         lib/linkdeck/plugins/XFramePlugin/MainMenu.xml \
         lib/cmake/LinkDeckCore/LinkDeckCoreConfig.cmake \
         lib/cmake/LinkDeckCore/LinkDeckCoreConfigVersion.cmake \
         lib/pkgconfig/linkdeck-core.pc share/applications/linkdeck.desktop \
         share/icons/hicolor/scalable/apps/linkdeck.svg; do
    [ -f "$prefix/$f" ] || fail "not installed: $f"
done
for link in lib/libcore.so:libcore.so.1 lib/libcore.so.1:libcore.so.1.0.0 \
            lib/libsdk.so:libsdk.so.1 lib/libsdk.so.1:libsdk.so.1.0.0 \
            bin/linkdeck:../lib/linkdeck/linkdeck; do
    target=$(readlink "$prefix/${link%%:*}") || fail "not a link: ${link%%:*}"
    [ "$target" = "${link#*:}" ] || fail "${link%%:*} -> $target, expected ${link#*:}"
done
# The application directory holds what the build's does, but the libraries, which are in lib/.
(cd "$build_dir/bin" && find . ! -type d ! -name 'libcore.so*' ! -name 'libsdk.so*' | sort) >"$tmp/build-bin.txt"
(cd "$prefix/lib/linkdeck" && find . ! -type d | sort) >"$tmp/appdir.txt"
diff -u "$tmp/build-bin.txt" "$tmp/appdir.txt" || fail "lib/linkdeck differs from $build_dir/bin"
echo "installed $(find "$prefix" ! -type d | wc -l) files; lib/linkdeck matches $build_dir/bin"

step "(b) no path into the source or build tree in installed files or RUNPATHs"
leaks=$(grep -rIl -F -e "$src_dir" -e "$build_abs" "$prefix" || true)
[ -z "$leaks" ] || fail "installed files naming the source or build tree: $leaks"
elves=0
while IFS= read -r -d '' f; do
    [ "$(head -c 4 "$f" | od -An -c | tr -d ' ')" = '177ELF' ] || continue
    elves=$((elves + 1))
    dyn=$(readelf -d "$f")
    if grep -F -e "$src_dir" -e "$build_abs" <<<"$dyn"; then fail "$f: RUNPATH into the tree"; fi
    if runpath=$(grep -E '\((RPATH|RUNPATH)\)' <<<"$dyn"); then
        grep -q 'path: \[\$ORIGIN' <<<"$runpath" || fail "$f: RUNPATH not relative: $runpath"
    fi
done < <(find "$prefix" -type f -print0)
[ "$elves" -ge 10 ] || fail "only $elves ELF files installed"
readelf -d "$prefix/lib/linkdeck/linkdeck" | grep -q 'path: \[\$ORIGIN/\.\.\]' ||
    fail "lib/linkdeck/linkdeck does not find lib/ through \$ORIGIN/.."
echo "no installed text file names $src_dir or $build_abs; $elves ELF files, RUNPATHs relative"

step "(c) desktop entry"
desktop-file-validate "$prefix/share/applications/linkdeck.desktop" || fail "desktop-file-validate"
echo "linkdeck.desktop is valid"

step "(c2) the shipped configuration passes linkdeck --check-config"
check_config "in the installed configuration"

step "(d) the example plugin, built out of tree against the prefix and loaded"
cp -r examples/hello-plugin "$tmp/hello-src"
env -u CMAKE_PREFIX_PATH cmake -S "$tmp/hello-src" -B "$tmp/hello-build" \
    -DCMAKE_PREFIX_PATH="$prefix" >"$tmp/hello.log" 2>&1 &&
    cmake --build "$tmp/hello-build" --parallel 2 >>"$tmp/hello.log" 2>&1 &&
    cmake --install "$tmp/hello-build" --prefix "$prefix" >>"$tmp/hello.log" 2>&1 ||
    { cat "$tmp/hello.log" >&2; fail "building or installing examples/hello-plugin"; }
if grep -rIl -F "$src_dir" "$tmp/hello-build" >&2; then fail "the example's build refers to the repository"; fi
[ -f "$prefix/lib/linkdeck/libHelloPlugin.so" ] || fail "libHelloPlugin.so not installed"
[ -f "$prefix/lib/linkdeck/plugins/HelloPlugin/HelloPlugin_de-de.lang" ] || fail "HelloPlugin's language files not installed"
# Register it as examples/hello-plugin/README.md says: a record and an item of the common set.
python3 - "$prefix/lib/linkdeck/config" <<'PY'
import sys
config = sys.argv[1]
record = """    <plugin>
        <name>HelloPlugin</name>
        <clsid>F2888527-AA28-481D-9A02-593F580A40DB</clsid>
        <url>.\\HelloPlugin.dll</url>
        <active>true</active>
        <type>7</type>
        <setting_title>false</setting_title>
        <static>false</static>
    </plugin>
"""
item = '        <item clsid="F2888527-AA28-481D-9A02-593F580A40DB"/> <!-- HelloPlugin -->\n'
for name, anchor, text in (("pluginslib.xml", "</pluginslib>", record),
                           ("PluginsConfig.xml", "    </common>", item)):
    path = f"{config}/{name}"
    with open(path, encoding="utf-8") as f:
        doc = f.read()
    if doc.count(anchor) != 1:
        sys.exit(f"{path}: expected one {anchor!r}")
    with open(path, "w", encoding="utf-8") as f:
        f.write(doc.replace(anchor, text + anchor))
PY
check_config "with HelloPlugin registered"
log=$tmp/hello-run.log
run_linkdeck "$prefix/bin/linkdeck" "$log" --quit-after 4000 || { tail -n 40 "$log" >&2; fail "linkdeck with HelloPlugin exited non-zero"; }
require_line "$log" "strFileName = $prefix/lib/linkdeck/libHelloPlugin\.so, QObject\* plugin loaded successfully" "HelloPlugin loaded from the prefix"
require_line "$log" 'base IBasePlugin load success, init=1, HelloPlugin init: elapsed=' "HelloPlugin initialised"
require_line "$log" "loading $prefix/lib/linkdeck/plugins/HelloPlugin/HelloPlugin_en-us\.lang" "HelloPlugin's language file looked up"
if grep -F 'HelloPlugin_en-us.lang does not exist' "$log"; then fail "HelloPlugin's language file missing"; fi
require_line "$log" 'HelloPlugin: menu entry "Say hello" added' "HelloPlugin's translated menu entry"

step "(e) pkg-config"
pc_flags=$(PKG_CONFIG_PATH="$prefix/lib/pkgconfig" pkg-config --cflags --libs linkdeck-core) || fail "pkg-config linkdeck-core"
echo "pkg-config --cflags --libs linkdeck-core: $pc_flags"
cat >"$tmp/pc.cpp" <<'CPP'
#include "Change.h"
#include "NexoBackend.h"
#include "PluginContainer.h"

#include <cstdio>

int main()
{
    std::printf("%s %s\n", qPrintable(Change::GetLangName()), NEXO_Backend_Name());
    return 0;
}
CPP
# shellcheck disable=SC2086 # the flags are words
${CXX:-c++} -std=c++17 "$tmp/pc.cpp" -o "$tmp/pc" $pc_flags -Wl,-rpath,"$prefix/lib" ||
    fail "compiling and linking with pkg-config's flags"
"$tmp/pc" >/dev/null || fail "the program linked with pkg-config's flags does not run"
echo "a program including PluginContainer.h compiles, links and runs with these flags"

step "(f) Debian package"
(cd "$build_dir" && cpack -G DEB -B "$tmp/deb") >"$tmp/cpack.log" 2>&1 || { cat "$tmp/cpack.log" >&2; fail "cpack -G DEB"; }
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build_dir/CMakeCache.txt")
deb=$tmp/deb/linkdeck_${version}_$(dpkg --print-architecture).deb
[ -f "$deb" ] || { ls "$tmp/deb" >&2; fail "no $(basename "$deb")"; }
dpkg-deb -c "$deb" >"$tmp/deb-contents.txt"
for f in ./usr/bin/linkdeck ./usr/lib/libcore.so.1 ./usr/lib/libsdk.so.1 ./usr/lib/linkdeck/linkdeck \
         ./usr/lib/linkdeck/libXFramePlugin.so ./usr/lib/linkdeck/config/pluginslib.xml \
         ./usr/lib/linkdeck/plugins/XFramePlugin/MainMenu.xml ./usr/include/linkdeck/PluginContainer.h \
         ./usr/lib/cmake/LinkDeckCore/LinkDeckCoreConfig.cmake ./usr/lib/pkgconfig/linkdeck-core.pc \
         ./usr/share/applications/linkdeck.desktop; do
    grep -q -E " $f( |\$)" "$tmp/deb-contents.txt" || fail "$(basename "$deb") lacks $f"
done
depends=$(dpkg-deb -f "$deb" Depends) || fail "no Depends field"
for lib in libqt5core5a libqt5widgets5 libqt5gui5 libc6; do
    grep -q "\b$lib\b" <<<"$depends" || fail "Depends lacks $lib: $depends"
done
echo "$(basename "$deb"): Depends: $depends"
dpkg-deb -x "$deb" "$tmp/root"
log=$tmp/deb-run.log
run_linkdeck "$tmp/root/usr/bin/linkdeck" "$log" --quit-after 3000 || { tail -n 40 "$log" >&2; fail "the unpacked linkdeck exited non-zero"; }
require_line "$log" "strFileName = $tmp/root/usr/lib/linkdeck/libXFramePlugin\.so, QObject\* plugin loaded successfully" "the main frame loaded from the package"
require_line "$log" 'base IBasePlugin load success, init=1, XFramePlugin init: elapsed=' "the main frame initialised"

printf '\ntest-install: all checks passed in %ds\n' $((SECONDS - started))
