import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]

sys.dont_write_bytecode = True
sys.path.append(str(ROOT / "tools" / "docs"))
