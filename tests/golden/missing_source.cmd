shaderqx missing.sl
