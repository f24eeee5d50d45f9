"""Copies and differences of models."""

__all__: list[str] = []
