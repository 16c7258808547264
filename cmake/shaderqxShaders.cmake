# shaderqx_add_shaders(TARGET SOURCES... [DSO] [OUTPUT_DIRECTORY D]
#                      [INCLUDE_DIRECTORIES ...] [OPTIONS ...])
#
# Makes TARGET, part of `all`, which compiles the sources. Each shader becomes D/SHADER.sqx; without
# OUTPUT_DIRECTORY, D is the folder TARGET in the current binary directory, where a relative D also begins.
# The property SHADERQX_OUTPUT_DIRECTORY of the target contains the path of D. With DSO the shaders become
# shared objects. INCLUDE_DIRECTORIES are searched for included files and shadeop libraries; relative ones
# begin in the current source directory. OPTIONS are options of the compiler.
#
# A source is compiled again when it, a file that it includes, a shadeop library whose functions it calls,
# the options or the compiler change. A library that the same project builds must be built first:
# add_dependencies(TARGET LIBRARY).
#
# The output of the rule is a stamp file, since only the compiler knows the name of the shader.
function(shaderqx_add_shaders target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "DSO" "OUTPUT_DIRECTORY" "INCLUDE_DIRECTORIES;OPTIONS")
    if(NOT arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "shaderqx_add_shaders: '${target}' has no sources")
    endif()
    if(NOT arg_OUTPUT_DIRECTORY)
        set(arg_OUTPUT_DIRECTORY "${target}")
    endif()
    cmake_path(ABSOLUTE_PATH arg_OUTPUT_DIRECTORY BASE_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}")

    set(options ${arg_OPTIONS})
    if(arg_DSO)
        list(APPEND options --dso)
    endif()
    foreach(directory IN LISTS arg_INCLUDE_DIRECTORIES)
        cmake_path(ABSOLUTE_PATH directory BASE_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}")
        list(APPEND options "-I${directory}")
    endforeach()

    set(state "${CMAKE_CURRENT_BINARY_DIR}/CMakeFiles/${target}.shaders")
    set(stamps "")
    foreach(source IN LISTS arg_UNPARSED_ARGUMENTS)
        cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}" NORMALIZE)
        cmake_path(GET source STEM stem)
        string(MAKE_C_IDENTIFIER "${stem}" stem)
        string(MD5 hash "${source}")
        set(stamp "${state}/stamps/${stem}-${hash}")
        add_custom_command(
            OUTPUT "${stamp}"
            COMMAND shaderqx::sqxmake --state "${state}" -o "${arg_OUTPUT_DIRECTORY}"
                    --step "${stamp}" ${options} -- "${source}"
            DEPENDS "${source}" shaderqx::shaderqx
            DEPFILE "${stamp}.d"
            COMMENT "Compiling shader ${source}"
            VERBATIM)
        list(APPEND stamps "${stamp}")
    endforeach()
    add_custom_target(${target} ALL DEPENDS ${stamps})
    set_target_properties(${target} PROPERTIES SHADERQX_OUTPUT_DIRECTORY "${arg_OUTPUT_DIRECTORY}")
endfunction()
