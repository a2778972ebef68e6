-- Settings of a machine. The host checks every value when it reads them.
Machine = {
    Name = "Bench mill",
    Tools = {
        { Mode = "Fast", Speed = 1200 },
        { Mode = "Slow", Speed = 300.5, Coolant = true },
    },
}
