shaderqx --version | sed 2d
