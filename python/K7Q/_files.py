"""Models in files."""
