mkdir out; shaderqx -d out two_names.sl; ls -R
