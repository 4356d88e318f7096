# The libraries of the Windows program, made from the distribution's source packages. For scripts
# that stand in the root folder of the sources. Each library is built once: what is finished has a
# stamp, and what was broken off goes on where it was.
readonly compiler=x86_64-w64-mingw32
readonly dependencies=$PWD/build/windows/dependencies
readonly prefix=$dependencies/prefix toolchain=$PWD/cmake/WindowsToolchain.cmake

# from_sources APT-TOOL ARGUMENT...: with the machine's own package sources, asked for sources. The
# machine's lists stay as they are.
from_sources() {
  "$1" -o Dir::Etc::SourceList=/dev/null -o Dir::Etc::SourceParts="$dependencies/apt/sources" \
    -o Dir::State::Lists="$dependencies/apt/lists" -o APT::Sandbox::User=root "${@:2}"
}

list_package_sources() {
  local codename file
  codename=$(. /etc/os-release && echo "$VERSION_CODENAME")
  mkdir -p "$dependencies"/apt/{sources,lists/partial}
  for file in /etc/apt/sources.list /etc/apt/sources.list.d/*; do
    [ -f "$file" ] || continue
    case $file in
      *.sources) awk -v RS= -v ORS='\n\n' -v suite="Suites: *$codename" '$0 ~ suite' "$file" |
        sed 's/^Types:.*/Types: deb-src/' ;;
      *.list) sed -En "s/^ *deb +((\[.*\] +)?[^ ]+ +$codename)/deb-src \1/p" "$file" ;;
    esac >"$dependencies/apt/sources/${file##*/}"
  done
  from_sources apt-get update -qq
}

# sources_of PACKAGE: leaves them in $dependencies/PACKAGE, as the distribution has patched them. A
# mirror may list a version that it does not have yet; then the one before it is taken.
sources_of() {
  local unpacking=$dependencies/unpacking version
  [ ! -d "$dependencies/$1" ] || return 0
  list_package_sources
  for version in $(from_sources apt-cache showsrc --only-source "$1" |
    sed -n 's/^Version: //p' | sort --version-sort --reverse --unique); do
    rm -rf "$unpacking"
    mkdir "$unpacking"
    if (cd "$unpacking" && from_sources apt-get source -qq --only-source "$1=$version"); then
      mv "$unpacking"/*/ "$dependencies/$1"
      rm -rf "$unpacking"
      return 0
    fi
  done
  return 1
}

build_toolkit() {
  local source=$dependencies/qt6-base feature features=()
  local objects=$source/build-windows
  sources_of qt6-base
  # Left out: the tablet's header is not in the source package, the newer font engine does not link
  # with this compiler, and the rest is what the program does not use or the system does not have.
  for feature in tabletevent directwrite3 direct2d opengl vulkan sql dbus printsupport xml openssl \
    system_zlib system_pcre2 pkg_config precompile_header; do
    features+=("-DFEATURE_$feature=OFF")
  done
  cmake -S "$source" -B "$objects" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$toolchain" \
    -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$prefix" -DBUILD_SHARED_LIBS=OFF \
    -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR="/usr/lib/$(g++ -print-multiarch)/cmake" \
    -DQT_BUILD_TESTS=OFF -DQT_BUILD_EXAMPLES=OFF -DINPUT_opengl=no -DFEATURE_schannel=ON "${features[@]}"
  cmake --build "$objects"
  cmake --install "$objects" >/dev/null
}

# Only the ciphers of the task database; a server's certificate is the system's own matter.
build_ciphers() {
  sources_of openssl
  cd "$dependencies/openssl"
  [ -e Makefile ] || ./Configure mingw64 --cross-compile-prefix="$compiler-" --prefix="$prefix" \
    --libdir=lib no-shared no-tests no-engine no-module no-asm
  make -s -j "$(nproc)" build_generated libcrypto.a
  mkdir -p "$prefix/lib" "$prefix/include"
  cp libcrypto.a "$prefix/lib"
  cp -r include/openssl "$prefix/include"
}

# The library as one source file, with those of the distribution's choices that the store meets.
build_database_engine() {
  sources_of sqlcipher
  local options=(-DSQLITE_HAS_CODEC -DSQLCIPHER_CRYPTO_OPENSSL -DSQLITE_TEMP_STORE=2
    -DSQLITE_THREADSAFE=1 -DSQLITE_SECURE_DELETE -DSQLITE_ENABLE_COLUMN_METADATA)
  cd "$dependencies/sqlcipher"
  [ -e Makefile ] || ./configure --enable-tempstore=yes --with-crypto-lib=none --disable-tcl >/dev/null
  make -s sqlite3.c sqlite3.h
  "$compiler-gcc-posix" -O2 -fno-strict-aliasing -w "${options[@]}" -I"$prefix/include" -c sqlite3.c -o sqlite3.windows.o
  mkdir -p "$prefix"/{lib/pkgconfig,include/sqlcipher}
  rm -f "$prefix/lib/libsqlcipher.a"
  "$compiler-ar" rcs "$prefix/lib/libsqlcipher.a" sqlite3.windows.o
  cp sqlite3.h "$prefix/include/sqlcipher"
  cat >"$prefix/lib/pkgconfig/sqlcipher.pc" <<PC
Name: SQLCipher
Description: the task database, for Windows
Version: $(cat VERSION)
Libs: -L$prefix/lib -lsqlcipher -lcrypto -lws2_32 -lcrypt32 -lgdi32
Cflags: -I$prefix/include/sqlcipher
PC
}

build_test_framework() {
  local objects=$dependencies/googletest-build
  cmake -S /usr/src/googletest -B "$objects" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$toolchain" \
    -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$prefix" -DBUILD_GMOCK=OFF >/dev/null
  cmake --build "$objects"
  cmake --install "$objects" >/dev/null
}

# once NAME COMMAND...
once() {
  local stamp=$dependencies/$1.done log=$dependencies/$1.log began=$SECONDS
  [ ! -e "$stamp" ] || return 0
  echo "Building $1, once; what it says is in $log"
  "${@:2}" >"$log" 2>&1 & # as a job of its own, in which errors end it
  wait $! || {
    tail -n 30 "$log" >&2
    echo "$1 could not be built" >&2
    return 1
  }
  echo "$((SECONDS - began)) s" >"$stamp"
}

build_dependencies() {
  mkdir -p "$dependencies"
  once toolkit build_toolkit
  once ciphers build_ciphers
  once database-engine build_database_engine
}

build_test_dependencies() {
  once test-framework build_test_framework
}
