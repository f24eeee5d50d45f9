"""What is wrong with a model."""
