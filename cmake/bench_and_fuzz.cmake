# bench/*.cpp: one executable orvane-bench with Google Benchmark, in the optimised native build.
file(GLOB bench_sources CONFIGURE_DEPENDS bench/*.cpp)
if(bench_sources AND NOT ORVANE_SANITIZE AND NOT ORVANE_FUZZ)
  find_package(benchmark QUIET)
  if(benchmark_FOUND)
    add_executable(orvane-bench ${bench_sources})
    target_link_libraries(orvane-bench PRIVATE orvane_sim_model orvane_headless orvane_core benchmark::benchmark)
    add_dependencies(programs orvane-bench)
  else()
    message(STATUS "Google Benchmark is not installed (libbenchmark-dev): orvane-bench is left out")
  endif()
endif()

# fuzz/NAME_fuzz.cpp: one libFuzzer program each, in the sanitizer build (clang) and in the fast build of fuzz/run.
# As a test each runs the inputs of fuzz/corpus/NAME and fuzz/regressions/NAME and a bounded number of inputs of its
# own; fuzz/run fuzzes for hours.
file(GLOB fuzz_sources CONFIGURE_DEPENDS fuzz/*_fuzz.cpp)
if(fuzz_sources AND (ORVANE_SANITIZE OR ORVANE_FUZZ) AND CMAKE_CXX_COMPILER_ID STREQUAL Clang)
  # What reads outside bytes is watched closely, comparison by comparison; what only shows them is watched by the
  # places it comes to, for the calls of the other kind would take most of the time. The tests' platform and the
  # checks themselves are not watched.
  foreach(source IN LISTS core_sources)
    file(RELATIVE_PATH place ${PROJECT_SOURCE_DIR} ${source})
    if(place MATCHES "^(base|link|settings)/|^window/(dib_section|region|bitmap_functions)")
      set_property(SOURCE ${source} APPEND PROPERTY COMPILE_OPTIONS -fsanitize=fuzzer-no-link)
    elseif(place MATCHES "^display/")
      set_property(SOURCE ${source} APPEND PROPERTY COMPILE_OPTIONS -fsanitize-coverage=inline-8bit-counters,pc-table)
    endif()
  endforeach()
  enable_testing()
  # Counts memory by operators new and delete of its own, which the address sanitizer takes for a mismatch.
  add_library(fuzz_counted_new OBJECT EXCLUDE_FROM_ALL tests/steady/counted_new.cpp)
  target_link_libraries(fuzz_counted_new PRIVATE orvane_options)
  add_custom_target(fuzzers)
  foreach(source IN LISTS fuzz_sources)
    get_filename_component(program ${source} NAME_WE)
    string(REGEX REPLACE "_fuzz$" "" name ${program})
    add_executable(${program} ${source})
    add_dependencies(fuzzers ${program})
    target_link_options(${program} PRIVATE -fsanitize=fuzzer)
    target_link_libraries(${program} PRIVATE orvane_sim_model orvane_headless orvane_core)
    if(name STREQUAL receive AND NOT ORVANE_SANITIZE)
      target_link_libraries(${program} PRIVATE fuzz_counted_new)
    else()
      target_compile_definitions(${program} PRIVATE ORVANE_HEAP_IS_NOT_COUNTED)
    endif()
    # The first folder receives what is found; the seeds are only read.
    set(found ${CMAKE_BINARY_DIR}/fuzz/${name})
    file(MAKE_DIRECTORY ${found})
    set(folders ${found})
    foreach(seeds IN ITEMS corpus regressions)
      if(IS_DIRECTORY ${PROJECT_SOURCE_DIR}/fuzz/${seeds}/${name})
        list(APPEND folders ${PROJECT_SOURCE_DIR}/fuzz/${seeds}/${name})
      endif()
    endforeach()
    add_test(NAME fuzz.${name} COMMAND ${program} -runs=20000 -max_total_time=8 -seed=1 -max_len=512
                                       -dict=${PROJECT_SOURCE_DIR}/fuzz/orvane.dict ${folders})
  endforeach()
endif()
