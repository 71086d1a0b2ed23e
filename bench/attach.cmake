# For a build tree whose top-level CMakeLists.txt does not add bench/ itself:
# bench/run.sh then passes this file as CMAKE_PROJECT_KestrelDownloader_INCLUDE.
# It runs inside project(), before any target exists, so bench/CMakeLists.txt
# is included at the end of the top-level file instead, where the targets the
# benchmarks reuse are defined. A deferred call may not add a subdirectory,
# hence include(); and it expands its arguments only when it runs, hence the
# path is written into the call now.
set(kestrel_bench_list "${CMAKE_CURRENT_LIST_DIR}/CMakeLists.txt")
cmake_language(EVAL CODE "cmake_language(DEFER CALL include [==[${kestrel_bench_list}]==])")
