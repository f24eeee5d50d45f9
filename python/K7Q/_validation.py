"""What is wrong with a model."""

__all__: list[str] = []
