local t = {} t.a = t t[1.5] = {} T = t debug.setmetatable(nil, { __call = function() return 1, 2 end, __index = function() return {} end })
