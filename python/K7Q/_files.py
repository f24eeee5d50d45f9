"""Models in files."""

__all__: list[str] = []
