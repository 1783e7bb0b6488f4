# vg_add_layer(<target> [CORE] DEPS <libs...>)
# Builds every .cpp/.h directly in the calling folder into a static library.
# CORE layers may use only QtCore and QtGui: linking Widgets or OpenGL there is refused.
function(vg_add_layer target)
    cmake_parse_arguments(ARG "CORE" "" "DEPS" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS
        ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
    if(NOT sources)
        # An empty layer still exists so that dependants link.
        set(sources ${PROJECT_SOURCE_DIR}/cmake/empty.cpp)
    endif()
    add_library(${target} STATIC ${sources})
    target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR})
    target_link_libraries(${target} PUBLIC ${ARG_DEPS})
    if(ARG_CORE)
        foreach(dep IN LISTS ARG_DEPS)
            if(dep MATCHES "Widgets|OpenGL")
                message(FATAL_ERROR "${target} is part of the GUI-free core and may not link ${dep}")
            endif()
        endforeach()
    endif()
endfunction()
