echo > a.sl; SLC_CPP_COMMAND='no-such-command 2>/dev/null' shaderqx a.sl
