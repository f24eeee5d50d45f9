// An empty library, to measure the cost of loading any library.
