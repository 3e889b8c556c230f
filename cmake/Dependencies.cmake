# Outside libraries the components link against, beside Qt.
# Each family adds what it needs here.
