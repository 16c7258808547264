echo > a.sl; SLC_CPP_COMMAND='echo broken; exit 7' shaderqx a.sl; status=$?; ls; exit $status
