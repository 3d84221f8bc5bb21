# GCC 12 reports overlapping copies inside std::string (GCC bug 105651).
set(next_steps_false_alarms
  $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>)

# Adds the project's warnings to the target. They are private, so they do not reach targets that link to it.
function(next_steps_warnings target)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast -Wcast-qual
    -Wnon-virtual-dtor -Woverloaded-virtual -Wdouble-promotion -Wformat=2
    -Wimplicit-fallthrough -Wunused -Wextra-semi
    $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond -Wlogical-op>
    ${next_steps_false_alarms}
    $<$<BOOL:${NEXT_STEPS_WARNINGS_AS_ERRORS}>:-Werror>)
endfunction()
