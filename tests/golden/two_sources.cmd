echo > a.sl; echo > b.sl; shaderqx a.sl -O1 b.sl
