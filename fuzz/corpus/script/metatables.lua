T = setmetatable({}, { __index = function(t, k) error(k) end, __newindex = function(t, k, v) rawset(t, k, { t }) end, __gc = error })
f = coroutine.wrap(function(...) coroutine.yield(...) end)
return f
