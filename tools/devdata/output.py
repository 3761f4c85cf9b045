"""Writing generated files: only when the content changes, and never half."""

import os
import tempfile


def write_if_changed(path, text):
    """Writes `text` to `path` unless the file already holds exactly that text. The text goes
    to a temporary file beside the target, which is renamed over it once complete, so a
    failed write leaves the previous file as it was. True when the file was written."""
    data = text.encode("utf-8")
    try:
        with open(path, "rb") as f:
            if f.read() == data:
                return False
    except OSError:
        pass
    folder = os.path.dirname(path) or "."
    os.makedirs(folder, exist_ok=True)
    fd, temp = tempfile.mkstemp(dir=folder, prefix="." + os.path.basename(path) + ".", suffix=".tmp")
    try:
        with os.fdopen(fd, "wb") as f:
            f.write(data)
        os.chmod(temp, 0o644)
        os.replace(temp, path)
    except BaseException:
        try:
            os.remove(temp)
        except OSError:
            pass
        raise
    return True
