shaderqx missing_include.sl 2>&1 | grep '^shaderqx'
