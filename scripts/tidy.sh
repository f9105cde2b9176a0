# Checks the names of every source and header, each header by itself, which also shows that it
# compiles alone, without the precompiled ones. First that the check finds a bad name at all.
tidy_names() {
    local build=build/tidy bad
    build tidy autogen
    bad=$(mktemp --suffix=.cpp)
    echo 'class clsBad { public: int Sum() { int BadLocal = badMember; return BadLocal; } private: int badMember = 0; };' >"$bad"
    local found
    found=$(clang-tidy --quiet --config-file=.clang-tidy "$bad" -- -std=c++20 2>/dev/null || true)
    rm -f "$bad"
    if [[ $found != *BadLocal* || $found != *badMember* ]]; then
        echo "test: clang-tidy lets bad names pass" >&2
        exit 1
    fi
    find src -name '*.h' -o -name '*.cpp' | sort |
        xargs -P 2 -n 4 clang-tidy --quiet -p "$build" --header-filter="^$PWD/src/" \
            --extra-arg=-Wno-unknown-warning-option --extra-arg=-Wno-pragma-once-outside-header 2>/dev/null
}
