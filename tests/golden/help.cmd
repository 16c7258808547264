shaderqx --help
