T = { Speed = 5, Mode = "Fast", "text", 2, 3, Tool = { 1, 2, 3 }, f = function(a) return a == 1 end }
function f(a, b) return b .. a end
