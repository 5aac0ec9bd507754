# Cross build for 64-bit Windows with Debian's mingw-w64 (posix threads, so that std::thread works).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(triple x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${triple}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triple}-g++-posix)
set(CMAKE_RC_COMPILER ${triple}-windres)

# scripts/build-libraries.sh puts libtiff, libpng and libjpeg for Windows here.
set(HALVORAN_LIBRARIES "${CMAKE_CURRENT_LIST_DIR}/../build/libraries" CACHE PATH "Libraries cross-built for Windows")
set(CMAKE_FIND_ROOT_PATH "${HALVORAN_LIBRARIES}" /usr/${triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The static zlib: a shared one would be one more library to ship.
set(ZLIB_LIBRARY /usr/${triple}/lib/libz.a CACHE FILEPATH "zlib for Windows")
set(ZLIB_INCLUDE_DIR /usr/${triple}/include CACHE PATH "zlib's headers")
