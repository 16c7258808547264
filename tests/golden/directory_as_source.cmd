mkdir folder.sl; shaderqx folder.sl
