set width 0
set height 0
set confirm off
break stopHere
run > /dev/null
up

python
def show(expression):
    try:
        print(expression + ": " + gdb.execute("print " + expression, to_string=True).split(" = ", 1)[1], end="")
    except gdb.error as error:
        print(expression + ": " + str(error))
end

python show("show")
python show("*title")
python show("*list")
set print elements 2
python show("*list")
python show("*title")
set print elements 200
python show("*sparse")
python show("*(DataField*)city")
python show("*points")
python show("*table")
python show("watcher")
python show("idle")
python show("*nothing")
python show("*raw")
python show("*gone")
python show("*rawHandler")
python show("*(DataValue*)raw")
python show("*(DataArray*)raw")
python show("*(DataValue*)gone")
python show("*(DataStructure*)gone")
python show("*(DataArray*)gone")
python show("*(DataHashTable*)gone")
python show("*(DataObject*)gone")
python show("*(DataValue*)1")
kill
