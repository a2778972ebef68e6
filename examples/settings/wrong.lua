-- As machine.lua, with a speed that the machine does not reach.
Machine = { Tools = { {}, { Mode = "Slow", Speed = 5000 } } }
