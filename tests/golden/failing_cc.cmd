SLC_CC_COMMAND='echo no such machine; exit 4' shaderqx --dso failing_cc.sl; status=$?; ls; exit $status
