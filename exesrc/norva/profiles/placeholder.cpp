// profiles
