# scripts/install-packages with a simulated system: its dpkg-query reports the packages in $system/installed, its
# apt-get and sudo record their arguments.

setup() {
    system=$BATS_TEST_TMPDIR
    checkout="$system/a check out"
    mkdir -p "$checkout/scripts" "$system/bin"
    cp "$KVR_SOURCE/scripts/install-packages" "$checkout/scripts"
    printf '%s\n' '# a list' '' '[tool]' 'alpha' 'beta' '' '[test]' 'gamma' >"$checkout/scripts/packages.txt"
    for command in cat dirname env flock mkdir mktemp readlink rm sh; do
        ln -s "$(command -v $command)" "$system/bin/$command"
    done
    command_of_the_system dpkg-query 'cat "'"$system"'/installed"'
    command_of_the_system apt-get 'echo "apt-get $*" >>"'"$system"'/calls"'
    command_of_the_system id 'echo 0'
    : >"$system/calls"
    : >"$system/installed"
}

command_of_the_system() { # NAME SCRIPT
    printf '#!/bin/sh\n%s\n' "$2" >"$system/bin/$1"
    chmod +x "$system/bin/$1"
}

install_packages() {
    PATH=$system/bin run "$checkout/scripts/install-packages" "$@"
    echo "$output"
}

calls_are() {
    diff "$system/calls" <(printf '%s\n' "$@")
}

@test "nothing is called and nothing is said when everything is there" {
    echo '<alpha installed><beta installed>' >"$system/installed"
    install_packages tool
    [ "$status" -eq 0 ]
    [ -z "$output" ]
    [ ! -s "$system/calls" ]
}

@test "only what is missing is installed, after an update of the lists" {
    echo '<alpha installed><beta config-files>' >"$system/installed"
    install_packages tool
    [ "$status" -eq 0 ]
    [ "$output" = "Installing beta" ]
    calls_are "apt-get -o DPkg::Lock::Timeout=600 update" \
        "apt-get -o DPkg::Lock::Timeout=600 install --yes --no-install-recommends beta"
}

@test "several sections are installed at once" {
    install_packages tool test
    [ "$output" = "Installing alpha beta gamma" ]
}

@test "a user who is not root installs through sudo" {
    command_of_the_system id 'echo 1000'
    command_of_the_system sudo 'echo "sudo $*" >>"'"$system"'/calls"'
    install_packages test
    [ "$status" -eq 0 ]
    calls_are \
        "sudo env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=600 update" \
        "sudo env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=600 install --yes --no-install-recommends gamma"
}

@test "without root and sudo the missing packages are named" {
    command_of_the_system id 'echo 1000'
    install_packages tool
    [ "$status" -eq 1 ]
    [[ $output == *"apt-get install alpha beta" ]]
    [ ! -s "$system/calls" ]
}

@test "an installation that fails shows what was said" {
    command_of_the_system apt-get 'echo "E: no space left"; exit 100'
    install_packages test
    [ "$status" -eq 1 ]
    [[ $output == *"E: no space left"* ]]
    [[ $output == *"could not be installed: gamma" ]]
}

@test "an update that fails does not keep the packages from being installed" {
    command_of_the_system apt-get 'case $* in *update) exit 100 ;; esac'
    install_packages test
    [ "$status" -eq 0 ]
}

@test "a package is not needed where its command has the version that is asked for, wherever it comes from" {
    printf '%s\n' '[all]' 'delta unless runner 18' 'omega' >>"$checkout/scripts/packages.txt"
    echo '<omega installed>' >"$system/installed"
    for version in v18.0.0 v20.1 22.3.4; do
        command_of_the_system runner "[ \"\$*\" = --version ] && echo $version"
        install_packages all
        [ "$status" -eq 0 ]
        [ ! -s "$system/calls" ]
    done
}

@test "a package is installed where its command is too old, is missing, or fails" {
    printf '%s\n' '[all]' 'delta unless runner 18' >>"$checkout/scripts/packages.txt"
    install_packages all
    [ "$output" = "Installing delta" ]
    for script in 'echo v9.8.7' 'echo unknown' 'echo v20.0; exit 1' ':'; do
        command_of_the_system runner "$script"
        install_packages all
        [ "$output" = "Installing delta" ]
    done
}

@test "a system without dpkg is left alone" {
    rm "$system/bin/dpkg-query"
    install_packages tool
    [ "$status" -eq 0 ]
    [ ! -s "$system/calls" ]
}

@test "each package of the real list has a section and stands in it once" {
    packages=$(grep -vE '^(#|$)' "$KVR_SOURCE/scripts/packages.txt")
    [ "$(echo "$packages" | head -n 1)" = "[tool]" ]
    run uniq -d <(echo "$packages" | sort)
    [ -z "$output" ]
}
