shaderqx -d nowhere unwritable_output.sl; status=$?; ls; exit $status
