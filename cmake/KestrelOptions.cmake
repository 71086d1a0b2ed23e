# One interface target that every project target links: language level,
# warnings and the Qt definitions the code base relies on.
add_library(kestrel_options INTERFACE)
target_compile_features(kestrel_options INTERFACE cxx_std_17)
target_compile_definitions(kestrel_options INTERFACE
    QT_NO_CAST_FROM_ASCII
    QT_NO_CONTEXTLESS_CONNECT
    # Log lines carry no file, line or function in their message context,
    # in debug and release builds alike.
    QT_NO_MESSAGELOGCONTEXT)

if(MSVC)
    target_compile_options(kestrel_options INTERFACE /W4)
    if(KESTREL_WARNINGS_AS_ERRORS)
        target_compile_options(kestrel_options INTERFACE /WX)
    endif()
else()
    target_compile_options(kestrel_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow
        -Wnon-virtual-dtor -Wcast-align -Woverloaded-virtual)
    if(KESTREL_WARNINGS_AS_ERRORS)
        target_compile_options(kestrel_options INTERFACE -Werror)
    endif()
endif()
