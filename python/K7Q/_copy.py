"""Copies and differences of models."""
