# What both Windows tool chains share. ORVANE_MINGW_TRIPLE is set by the file that includes this one.
set(CMAKE_SYSTEM_NAME Windows)

# The -posix variant brings std::thread and std::mutex; the -win32 variant of this compiler has none.
set(CMAKE_C_COMPILER ${ORVANE_MINGW_TRIPLE}-gcc-posix)
set(CMAKE_CXX_COMPILER ${ORVANE_MINGW_TRIPLE}-g++-posix)
set(CMAKE_RC_COMPILER ${ORVANE_MINGW_TRIPLE}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${ORVANE_MINGW_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
