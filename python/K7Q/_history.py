"""Transactions, undo, and listening to changes."""
