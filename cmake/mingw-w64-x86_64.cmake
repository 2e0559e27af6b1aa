set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(ORVANE_MINGW_TRIPLE x86_64-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake)

# ctest starts every Windows test through this, so a preset's tests are run the same way on each system.
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/wine-run)
