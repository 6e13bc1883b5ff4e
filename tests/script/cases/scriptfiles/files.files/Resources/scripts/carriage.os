return seen
