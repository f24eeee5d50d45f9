// A library with nothing in it: what loading one costs by itself.
