SLC_CC_COMMAND='echo not asked for' shaderqx --dso -c cpp_file_only.sl; ls
