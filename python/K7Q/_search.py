"""Finding objects by name, by class and by who refers to them."""
