# Programs under Wine share a pointer, a clipboard, a temporary folder and a registry. So they are tested in lanes: one at a
# time in each, with a display and a Wine prefix for every lane. See scripts/environment.sh and ./test.
set(HALVORAN_LANES 4)

# halvoran_lane(TEST): puts it into the next lane, and sets its ENVIRONMENT for that.
function(halvoran_lane test)
    get_property(lane GLOBAL PROPERTY HALVORAN_NEXT_LANE)
    if(NOT lane)
        set(lane 0)
    endif()
    set_tests_properties(${test} PROPERTIES RESOURCE_LOCK lane_${lane} ENVIRONMENT HALVORAN_LANE=${lane})
    math(EXPR next "(${lane} + 1) % ${HALVORAN_LANES}")
    set_property(GLOBAL PROPERTY HALVORAN_NEXT_LANE ${next})
endfunction()
