# Built only: the 64-bit Wine that Debian installs without a second architecture cannot run it.
set(CMAKE_SYSTEM_PROCESSOR x86)
set(ORVANE_MINGW_TRIPLE i686-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake)
