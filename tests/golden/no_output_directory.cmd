echo > a.sl; shaderqx -d -O1 a.sl
