# All places with the version of the project or the date of its release agree with CMakeLists.txt.

setup() {
    cd "$KVR_SOURCE"
    version=$(sed -n 's/^    VERSION \([0-9.]*\)$/\1/p' CMakeLists.txt)
    date=$(sed -n 's/^set(KVR_RELEASE_DATE \(.*\))$/\1/p' CMakeLists.txt)
    [[ $version =~ ^[0-9]+\.[0-9]+\.[0-9]+$ ]]
    [[ $date =~ ^[0-9]{4}-[0-9]{2}-[0-9]{2}$ ]]
    major=${version%%.*}
    series=${version%.*}
}

# Expects that TEXT has at least one line and that all its lines equal WANTED.
all_are() { # WANTED TEXT
    diff <(printf '%s\n' "$1") <(sort -u <<<"$2")
}

@test "kvr.h has the version, as a text and in parts" {
    grep -qxF "#define KVR_VERSION_STRING \"$version\"" kvr/kvr.h
    parts=$(sed -n 's/^#define KVR_VERSION_\(MAJOR\|MINOR\|PATCH\) //p' kvr/kvr.h | paste -sd .)
    [ "$parts" = "$version" ]
}

@test "the tool says the version" {
    [ "$("$KVRMEM" --version)" = "kvrmem $version" ]
    grep -qxF "kvrmem $version" tests/cli/cases/general/version.case
}

@test "the manual page has version and date" {
    [ "$("$KVRMEM" --generate man | sed -n 's/^\.TH KVRMEM 1 //p' | cut -d ' ' -f 1-3)" = "\"$date\" \"kvrmem $version\"" ]
}

@test "the newest release of the CHANGELOG has version and date" {
    [ "$(grep -m 1 '^## \[[0-9]' CHANGELOG.md)" = "## [$version] - $date" ]
}

@test "each release of the CHANGELOG has one section, the newest first" {
    releases=$(sed -n 's/^## \[\([0-9.]*\)\] - [0-9-]*$/\1/p' CHANGELOG.md)
    [ "$(grep -c '^## \[[0-9]' CHANGELOG.md)" -eq "$(wc -l <<<"$releases")" ]
    diff <(sort --version-sort --reverse --unique <<<"$releases") <(printf '%s\n' "$releases")
}

@test "debian/changelog has version and date, and a suite" {
    [[ $(head -n 1 debian/changelog) == "kvr ($version) unstable; "* ]]
    [ "$(date -u -d "$(sed -n 's/^ -- .*>  //p' debian/changelog | head -n 1)" +%F)" = "$date" ]
}

@test "the releases of debian/changelog are those of the CHANGELOG" {
    diff <(sed -n 's/^## \[\([0-9.]*\)\] - \([0-9-]*\)$/\1 \2/p' CHANGELOG.md) \
        <(sed -n 's/^kvr (\([^)]*\)).*/\1/p' debian/changelog |
            paste -d ' ' - <(sed -n 's/^ -- .*>  //p' debian/changelog | date -u -f - +%F))
}

@test "the extension of Visual Studio Code and its lock file have the version" {
    versions=$(python3 -B -c '
import json
print(json.load(open("editors/vscode/package.json"))["version"])
lock = json.load(open("editors/vscode/package-lock.json"))
print(lock["version"])
print(lock["packages"][""]["version"])')
    all_are "$version" "$versions"
    [ "$(wc -l <<<"$versions")" -eq 3 ]
}

@test "the Python package has the version" {
    mkdir "$BATS_TEST_TMPDIR/stubs"
    : >"$BATS_TEST_TMPDIR/stubs/pybind11.py" # only a build needs it
    [ "$(PYTHONPATH=$BATS_TEST_TMPDIR/stubs python3 -B setup.py --version 2>/dev/null | tail -n 1)" = "$version" ]
    python3 -B - <<'END'
import re
project = open("pyproject.toml").read()
assert re.search(r'^dynamic = \[.*"version"', project, re.M)
assert not re.search(r"^version\b", project, re.M)
END
}

@test "the hooks in docs/ci.md are those of the release" {
    all_are "v$version" "$(sed -n 's/^ *rev: //p' docs/ci.md)"
}

@test "pkg-config gets the version from CMake" {
    for template in cmake/*.pc.in; do
        all_are 'Version: @PROJECT_VERSION@' "$(grep '^Version:' "$template")"
    done
}

# While the major version is 0, a later minor version does not satisfy a request for this one.
@test "what is shown and built asks CMake for this series" {
    wanted=$(grep -rhoE --exclude=upgrading.md 'find_package\(kvr [0-9.]+' README.md docs examples | cut -d ' ' -f 2)
    all_are "$series" "$wanted"
    all_are "$series" "$(sed -n 's/^set(WANTED_VERSION \([0-9.]*\) .*/\1/p' tests/consumer/find_package/CMakeLists.txt)"
}

@test "the kept interfaces have the sonames of the major version" {
    for library in kvr kvrimage; do
        soname=$(xz --decompress --stdout "tests/package/$library.abi.xz" |
            sed -n "s/^<abi-corpus .*soname='\([^']*\)'.*/\1/p")
        all_are "lib$library.so.$major" "$soname"
        all_are "${library^^}_$major" "$(xz --decompress --stdout "tests/package/$library.abi.xz" |
            grep -oE "version='${library^^}_[0-9.]+'" | cut -d "'" -f 2)"
    done
}

@test "the Debian packages of the libraries are called by the sonames" {
    diff <(printf 'libkvr%s\nlibkvrimage%s\n' "$major" "$major") \
        <(sed -n 's/^Package: \(lib.*[0-9]\)$/\1/p' debian/control | sort)
    for library in kvr kvrimage; do
        [ -e "debian/lib$library$major.install" ]
        grep -qF "lib$library$major (= \${binary:Version})" debian/control
    done
}

@test "docs/upgrading.md has a section for the newest release, from the one before" {
    previous=$(sed -n 's/^## \[\([0-9.]*\)\] - .*/\1/p' CHANGELOG.md | sed -n 2p)
    grep -qxF "## From $previous to $version" docs/upgrading.md
}
