#!/usr/bin/env bash
# Asks for the simulator on two buses: one starts it by the service file that is shipped (a bus of the system does
# that by systemd, as the service's own user), and one has the rules of a system bus that are shipped, by which
# everyone reads, and only root and the service's user write.
#
# Usage: device_bus.sh SERVICE_FILE_TEMPLATE POLICY DEVICE_SIMULATOR DEVICE_FILE
set -euo pipefail
work=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; wait; rm -rf "$work"' EXIT
chmod 755 "$work"
cp "$4" "$work/activated.json"
cp "$4" "$work/device.json"

start_bus() { # TYPE; what else is set is read from standard input
    echo "<busconfig><type>$1</type><listen>unix:path=$work/$1</listen>$(cat)</busconfig>" >"$work/$1.conf"
    mkfifo "$work/$1.ready"
    dbus-daemon --nofork --print-address --config-file="$work/$1.conf" >"$work/$1.ready" 2>"$work/$1.log" &
    read -r <"$work/$1.ready"
    export TEXTMANAGER_BUS=$1 "DBUS_${1^^}_BUS_ADDRESS=unix:path=$work/$1"
}
call() { # METHOD ARGUMENT...
    "${user[@]}" dbus-send "--$TEXTMANAGER_BUS" --print-reply --dest=Device.DeviceManager /Configuration \
        Interface."$1" "${@:2}" 2>&1 || true
}
expect() { # PART_OF_THE_ANSWER ANSWER
    [[ $2 == *"$1"* ]] || { echo "device_bus: expected '$1', got: $2" >&2; cat "$work"/*.log >&2; exit 1; }
}
element=(string:DeviceSettings/DeviceSettings string:Language string:TextManager)
user=()

mkdir "$work/services"
sed -e "s|@CMAKE_INSTALL_FULL_BINDIR@/device-simulator|$3|" -e "s|@state_file@|$work/activated.json|" "$1" \
    >"$work/services/Device.DeviceManager.service"
start_bus session <<END
<servicedir>$work/services</servicedir>
<policy context="default"><allow send_destination="*"/><allow receive_sender="*"/><allow own="*"/></policy>
END
expect "variant " "$(call Configuration.getConfigurationElementValue "${element[@]}")"

start_bus system <<END
<policy context="default">
  <allow user="*"/>
  <deny own="*"/>
  <deny send_type="method_call"/>
  <allow send_type="signal"/>
  <allow send_requested_reply="true" send_type="method_return"/>
  <allow send_requested_reply="true" send_type="error"/>
  <allow receive_type="method_call"/>
  <allow receive_type="method_return"/>
  <allow receive_type="error"/>
  <allow receive_type="signal"/>
  <allow send_destination="org.freedesktop.DBus"/>
</policy>
<include>$(realpath "$2")</include>
<policy user="$(id -u)"><allow own="Device.DeviceManager"/></policy>
END
mkfifo "$work/simulator.ready"
"$3" "$work/device.json" >"$work/simulator.ready" &
read -r <"$work/simulator.ready"
if [[ $(id -u) == 0 ]]; then
    expect "method return" "$(call Configuration.setConfigurationElementValue "${element[@]}" variant:string:fr_FR)"
    user=(setpriv --reuid=65534 --clear-groups)
fi
expect "string" "$(call Configuration.getConfigurationElementValue "${element[@]}")"
expect "boolean true" "$(call Configuration.getStatusDisplay)"
expect "AccessDenied" "$(call Configuration.setConfigurationElementValue "${element[@]}" variant:string:ja_JP)"
expect "AccessDenied" "$(call DeviceSimulator.announceConfigurationDataChange)"
