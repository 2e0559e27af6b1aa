# How our own code is compiled. Third-party code (GoogleTest) gets only what is global: the language and
# the sanitizers, which must cover all or report nonsense.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

set(ORVANE_SANITIZE "" CACHE STRING "Sanitizers for everything, as in address,undefined")
if(ORVANE_SANITIZE)
  add_compile_options(-fsanitize=${ORVANE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${ORVANE_SANITIZE})
endif()
if(NOT WIN32)
  # Bounds of std::string, std::vector and the like, also with optimisation; the shipped exe goes without.
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
endif()

option(ORVANE_WERROR "Warnings are errors (meant for the compilers that the project is checked with)" ON)
add_library(orvane_options INTERFACE)
target_include_directories(orvane_options INTERFACE ${PROJECT_SOURCE_DIR})
if(MSVC)
  target_compile_options(orvane_options INTERFACE /W4 $<$<BOOL:${ORVANE_WERROR}>:/WX>)
else()
  target_compile_options(orvane_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wformat=2
                                                  $<$<BOOL:${ORVANE_WERROR}>:-Werror>)
endif()

if(WIN32)
  # Windows 7 is the oldest system served: newer calls must be looked up at run time, and this makes the
  # headers hide them.
  target_compile_definitions(orvane_options INTERFACE _WIN32_WINNT=0x0601 WINVER=0x0601)
endif()

# One file, nothing to install beside it: the compiler's run-time is inside. Random load address, no execution of
# data, checked stacks and, where the size of a buffer is known, checked copies; what these checks call is inside too.
# Control flow guard is not there: g++ has none for Windows, and its endbr64 (-fcf-protection) guards nothing in an image
# that its linker cannot mark. The same sources give the same bytes, wherever and whenever they are compiled.
if(MSVC)
  # This compiler has the rest on by itself, or knows it under other names.
  set(CMAKE_MSVC_RUNTIME_LIBRARY "MultiThreaded$<$<CONFIG:Debug>:Debug>")
  add_compile_options($<$<COMPILE_LANGUAGE:CXX>:/utf-8>)
  add_link_options(/Brepro)
elseif(WIN32)
  # One section each, so that the linker can drop what nobody calls.
  add_compile_options(-ffunction-sections -fdata-sections -fstack-protector-strong)
  add_compile_definitions($<$<NOT:$<CONFIG:Debug>>:_FORTIFY_SOURCE=2>)  # checks need the optimiser
  add_compile_options("-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.")
  add_link_options(-fstack-protector-strong -static -static-libgcc -static-libstdc++ -Wl,--gc-sections)
  # Older linkers have these off, so they are spelled out.
  add_link_options(-Wl,--dynamicbase -Wl,--nxcompat)
  if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    add_link_options(-Wl,--high-entropy-va)
  endif()
  add_link_options(-Wl,--no-insert-timestamp $<$<CONFIG:Release,MinSizeRel>:-s>)
endif()

# orvane_add_library(NAME SOURCES... [DEPENDS targets...]): a static library of ours, or an empty one as long
# as its folders hold no source.
function(orvane_add_library name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;DEPENDS")
  if(arg_SOURCES)
    add_library(${name} STATIC ${arg_SOURCES})
    target_link_libraries(${name} PUBLIC orvane_options ${arg_DEPENDS})
  else()
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE orvane_options ${arg_DEPENDS})
  endif()
endfunction()
