return runFile("data/rooted.os")
