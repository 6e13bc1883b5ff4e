return runFile("../data/one.os")
