from collections.abc import Callable, Mapping
from typing import Any

__ua_domain__: str
__ua_cache__: Any

def __ua_function__(
    method: Callable[..., Any], arguments: tuple[Any, ...], keywords: Mapping[str, Any]
) -> Any: ...
