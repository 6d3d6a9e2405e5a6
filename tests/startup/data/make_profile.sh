#!/usr/bin/env bash
# Makes registrymodifications.xcu the way the office writes it for a new user: a headless
# office starts on a fresh profile and ends once set up.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
profile=$(mktemp -d)
trap 'rm -rf "$profile"' EXIT
soffice --headless --norestore --terminate_after_init "-env:UserInstallation=file://$profile" 2>/dev/null
cp "$profile/user/registrymodifications.xcu" "$here/registrymodifications.xcu"
