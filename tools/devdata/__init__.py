"""Generators of the per-device data files of the bundled installation (Python 3 standard
library only): the catalogue and table readers they share, one module per file format."""
