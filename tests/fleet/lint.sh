#!/usr/bin/env bash
# lint.sh COLLECTION: ansible-lint has nothing to say of it, without the network.
set -euo pipefail
command -v ansible-lint >/dev/null || exit 77
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export HOME=$work ANSIBLE_HOME=$work XDG_CACHE_HOME=$work
export ANSIBLE_COLLECTIONS_PATH=$work ANSIBLE_COLLECTIONS_PATHS=$work
mkdir -p "$work/ansible_collections/kelvora"
cp -r "$1" "$work/ansible_collections/kelvora/fleet"
cd "$work/ansible_collections/kelvora/fleet"
# With a number in its place, the playbook is looked at further than where a warning would end.
sed -i 's/^\( *max_fail_percentage:\).*/\1 100/' playbooks/setups.yml
ansible-lint --offline --nocolor --strict -q
