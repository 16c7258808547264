shaderqx --optimize missing.sl
